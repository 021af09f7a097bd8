// SPDX-License-Identifier: MIT

#include "column-splitter.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QSplitterHandle>

namespace {

constexpr int step = 16;

class Handle : public QSplitterHandle
{
    Q_OBJECT

public:
    explicit Handle(QSplitter *splitter)
        : QSplitterHandle(splitter->orientation(), splitter)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

    [[nodiscard]] int position() const { return splitter()->sizes().constFirst(); }
    void moveTo(int position)
    {
        const int whole = splitter()->width() - splitter()->handleWidth();
        moveSplitter(isRightToLeft() ? whole - position : position);
    }
    [[nodiscard]] QPair<int, int> limits()
    {
        int least = 0;
        int most = 0;
        splitter()->getRange(1, &least, &most);
        return {least, most};
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        const bool towardsEnd = event->key() == (isRightToLeft() ? Qt::Key_Left : Qt::Key_Right);
        if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)
            moveTo(position() + (towardsEnd ? kovaPx(step) : -kovaPx(step)));
        else
            QSplitterHandle::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent *event) override
    {
        QSplitterHandle::paintEvent(event);
        if (!hasFocus())
            return;
        QPainter painter(this);
        painter.fillRect(rect().adjusted(kovaPx(3), 0, -kovaPx(3), 0),
                         palette().color(QPalette::Link));
    }
};

class HandleAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit HandleAccessible(Handle *handle)
        : QAccessibleWidget(handle, QAccessible::Slider)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QStringList actionNames() const override
    {
        return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &name) override
    {
        if (name == increaseAction())
            setCurrentValue(handle()->position() + kovaPx(step));
        else if (name == decreaseAction())
            setCurrentValue(handle()->position() - kovaPx(step));
        else
            QAccessibleWidget::doAction(name);
    }
    QVariant currentValue() const override { return handle()->position(); }
    void setCurrentValue(const QVariant &value) override { handle()->moveTo(value.toInt()); }
    QVariant minimumValue() const override { return handle()->limits().first; }
    QVariant maximumValue() const override { return handle()->limits().second; }
    QVariant minimumStepSize() const override { return 1; }

private:
    Handle *handle() const { return static_cast<Handle *>(widget()); }
};

QAccessibleInterface *createAccessible(const QString &, QObject *object)
{
    auto *handle = qobject_cast<Handle *>(object);
    return handle ? new HandleAccessible(handle) : nullptr;
}

} // namespace

ColumnSplitter::ColumnSplitter(const QString &handleName)
    : m_handleName(handleName)
{
    QAccessible::installFactory(createAccessible);
    connect(this, &QSplitter::splitterMoved, this,
            [this] { Q_EMIT widthChanged(sizes().constFirst()); });
}

QSplitterHandle *ColumnSplitter::createHandle()
{
    auto *handle = new Handle(this);
    handle->setAccessibleName(m_handleName);
    return handle;
}

#include "column-splitter.moc"
