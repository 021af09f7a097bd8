#include "link-label.h"

#include <QAccessibleWidget>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

class LinkAccessible : public QAccessibleWidget
{
public:
    explicit LinkAccessible(LinkLabel *label)
        : QAccessibleWidget(label, QAccessible::Link)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !own.isEmpty())
            return own;
        const QString shown = label()->text();
        return Qt::mightBeRichText(shown) ? QTextDocumentFragment::fromHtml(shown).toPlainText()
                                          : shown;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.linked = true;
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (label()->isEnabled())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString &name) override
    {
        if (name != pressAction())
            QAccessibleWidget::doAction(name);
        else if (label()->isEnabled())
            Q_EMIT label()->clicked();
    }

private:
    LinkLabel *label() const { return static_cast<LinkLabel *>(widget()); }
};

QAccessibleInterface *createInterface(const QString &className, QObject *object)
{
    if (className != QLatin1String(LinkLabel::staticMetaObject.className()))
        return nullptr;
    auto *label = qobject_cast<LinkLabel *>(object);
    return label ? new LinkAccessible(label) : nullptr;
}

void installAccessibility()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
}

} // namespace

LinkLabel::LinkLabel(const QString &text, QLabel *parent)
    : QLabel(parent)
{
    installAccessibility();
    // Given to the base, the text would make Qt settle on the interface of a plain label.
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
}

LinkLabel::~LinkLabel()
{
    if (m_holdsCursor)
        QGuiApplication::restoreOverrideCursor();
}

void LinkLabel::mousePressEvent(QMouseEvent *event)
{
    const QPointer<LinkLabel> guard(this);
    Q_EMIT clicked();
    if (guard)
        QLabel::mousePressEvent(event);
}

void LinkLabel::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            Q_EMIT clicked();
        return;
    default:
        QLabel::keyPressEvent(event);
    }
}

void LinkLabel::enterEvent(QEvent *event)
{
    if (isEnabled())
        startHover();
    QLabel::enterEvent(event);
}

void LinkLabel::leaveEvent(QEvent *event)
{
    if (isEnabled()) {
        endHover();
        QLabel::leaveEvent(event);
    } else {
        m_holdsCursor = false;
        QLabel::enterEvent(event);
    }
}

void LinkLabel::hideEvent(QHideEvent *event)
{
    if (m_holdsCursor)
        endHover();
    QLabel::hideEvent(event);
}

void LinkLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && isEnabled() && isVisible() && underMouse())
        startHover();
    QLabel::changeEvent(event);
}

void LinkLabel::startHover()
{
    if (!m_holdsCursor)
        QGuiApplication::setOverrideCursor(Qt::PointingHandCursor);
    m_holdsCursor = true;
    setUnderlined(true);
}

void LinkLabel::endHover()
{
    if (m_holdsCursor)
        QGuiApplication::restoreOverrideCursor();
    m_holdsCursor = false;
    setUnderlined(false);
}

void LinkLabel::setUnderlined(bool underlined)
{
    QFont changed = font();
    changed.setUnderline(underlined);
    setFont(changed);
}

void LinkLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    QStylePainter(this).drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
