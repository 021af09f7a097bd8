// SPDX-License-Identifier: MIT

#include "message-label.h"

#include "kovakit-qt/accessibility/linked-text-accessible_p.h"
#include "kovakit-qt/utils/fit-height_p.h"

MessageLabel::MessageLabel(QWidget *parent)
    : QLabel(parent)
{
    installLinkedTextAccessibility<MessageLabel>();
}

void MessageLabel::fitHeight()
{
    fitHeightToWidth(this);
}

void MessageLabel::resizeEvent(QResizeEvent *)
{
    fitHeight();
}
