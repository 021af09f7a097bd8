// SPDX-License-Identifier: MIT

#include "keys_p.h"

int pageStep(const QKeyEvent *event, Qt::LayoutDirection direction)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isAlt = modifiers == Qt::AltModifier;
    const bool isPlain = modifiers == Qt::NoModifier;
    const int right = direction == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return isAlt ? -right : 0;
    case Qt::Key_Right:
        return isAlt ? right : 0;
    case Qt::Key_Backspace:
    case Qt::Key_Back:
        return isPlain ? -1 : 0;
    case Qt::Key_Forward:
        return isPlain ? 1 : 0;
    default:
        return 0;
    }
}

int pageStep(Qt::MouseButton button)
{
    if (button == Qt::BackButton)
        return -1;
    return button == Qt::ForwardButton ? 1 : 0;
}
