// SPDX-License-Identifier: MIT

#pragma once

#include <QKeyEvent>

// Whether the key is Return or the Enter of the number pad, which do the same everywhere.
[[nodiscard]] inline bool isReturn(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

// Where a key or a button of the mouse leads among pages: -1 is back, 1 forward, 0 nowhere. The
// arrow keys are those of the arrows that are shown, which are mirrored from right to left.
[[nodiscard]] int pageStep(const QKeyEvent *event, Qt::LayoutDirection direction);
[[nodiscard]] int pageStep(Qt::MouseButton button);
