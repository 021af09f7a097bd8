// SPDX-License-Identifier: MIT

#include "shown-text_p.h"

QString ShownTextAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? shownText() : QAccessibleWidget::text(kind);
}

void *ShownTextAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface *>(this)
                                              : QAccessibleWidget::interface_cast(type);
}

QString ShownTextAccessible::text(int startOffset, int endOffset) const
{
    return shownText().mid(startOffset, endOffset - startOffset);
}

int ShownTextAccessible::characterCount() const
{
    return shownText().size();
}

QString ShownTextAccessible::attributes(int, int *startOffset, int *endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return QString();
}

void ShownTextAccessible::selection(int, int *startOffset, int *endOffset) const
{
    *startOffset = *endOffset = 0;
}
