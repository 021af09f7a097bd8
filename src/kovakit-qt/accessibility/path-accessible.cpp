#include "path-accessible_p.h"

#include <kovakit-qt/widgets/kova-button-path.h>

#include <QAccessibleWidget>
#include <QPushButton>

namespace {

bool isArrowOfPath(const QPushButton *button)
{
    const QWidget *viewport = button->parentWidget();
    return viewport && button->focusPolicy() == Qt::NoFocus
        && qobject_cast<KovaButtonPath *>(viewport->parentWidget());
}

QAccessibleInterface *createInterface(const QString &className, QObject *object)
{
    if (className == QLatin1String(KovaButtonPath::staticMetaObject.className())) {
        auto *path = qobject_cast<KovaButtonPath *>(object);
        return path ? new QAccessibleWidget(path, QAccessible::ToolBar) : nullptr;
    }
    if (className == QLatin1String(QPushButton::staticMetaObject.className())) {
        auto *button = qobject_cast<QPushButton *>(object);
        if (button && isArrowOfPath(button))
            return new QAccessibleWidget(button, QAccessible::Separator);
    }
    return nullptr;
}

} // namespace

void installPathAccessibility(KovaButtonPath *path)
{
    QAccessible::installFactory(createInterface);
    // With a screen reader running, the table has been asked for its interface by now, and Qt has
    // settled on that of a plain table.
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(path);
    if (interface->role() != QAccessible::ToolBar)
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
}
