// SPDX-License-Identifier: MIT

#include "path-accessible_p.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QAccessibleWidget>
#include <QPushButton>

QAccessibleInterface *makePathAccessible(QWidget *path)
{
    return new QAccessibleWidget(path, QAccessible::ToolBar);
}

QAccessibleInterface *makeArrowAccessible(QPushButton *arrow)
{
    return new QAccessibleWidget(arrow, QAccessible::Separator);
}
