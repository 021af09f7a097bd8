// SPDX-License-Identifier: MIT

#include "named-accessible_p.h"

#include <QWidget>

#include <QAccessible>
#include <QAccessibleWidget>

QString NamedAccessible::text(QAccessible::Text kind) const
{
    const QString own = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && own.isEmpty() ? shownName() : own;
}

void renewAccessible(QWidget *widget)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
}
