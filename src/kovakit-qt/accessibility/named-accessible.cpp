// SPDX-License-Identifier: MIT

#include "named-accessible_p.h"

#include "kovakit-qt/utils/markup_p.h"

#include <QWidget>

#include <QAccessible>
#include <QAccessibleWidget>

QString NamedAccessible::text(QAccessible::Text kind) const
{
    // A tool tip, which stands in for a description, may have tags, and may be the name.
    if (kind == QAccessible::Description && widget()->accessibleDescription().isEmpty()) {
        const QString tip = withoutMarkup(widget()->toolTip());
        return tip == text(QAccessible::Name) ? QString() : tip;
    }
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
