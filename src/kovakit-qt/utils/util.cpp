// SPDX-License-Identifier: MIT

#include "util.h"

#include <QLoggingCategory>
#include <QWidget>

const QLoggingCategory &debug_message()
{
    static const QLoggingCategory category("debug.message");
    return category;
}

// Makes the category known to filter rules as soon as the library is loaded.
[[maybe_unused]] static const QLoggingCategory &categoryAtLoad = debug_message();

void adjustFocusPolicy(Qt::FocusPolicy policy, QList<QWidget *> widgets)
{
    for (QWidget *widget : widgets)
        widget->setFocusPolicy(policy);
}
