// SPDX-License-Identifier: MIT

#include "announcement_p.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QWidget>

namespace {

constexpr char textProperty[] = "text";

// Screen readers say the name of a notification that is shown. Qt passes its own alerts on to none
// of them.
class Notification : public QAccessibleObject
{
public:
    explicit Notification(QObject *news)
        : QAccessibleObject(news)
    {
    }

    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(object()->parent());
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QWindow *window() const override { return parent() ? parent()->window() : nullptr; }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? object()->property(textProperty).toString() : QString();
    }
};

} // namespace

void announce(QWidget *widget, const QString &text)
{
    if (!QAccessible::isActive() || text.isEmpty())
        return;
    // One at a time: the words before are heard by now, or nobody wants them any more.
    const QString name = QStringLiteral("kova-announcement");
    delete widget->findChild<QObject *>(name, Qt::FindDirectChildrenOnly);
    auto *news = new QObject(widget);
    news->setObjectName(name);
    news->setProperty(textProperty, text);
    auto *interface = new Notification(news);
    QAccessible::registerAccessibleInterface(interface);
    QAccessibleEvent event(interface, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
}
