// SPDX-License-Identifier: MIT

#pragma once

#include <QKeyEvent>

// Whether the key is Return or the Enter of the number pad, which do the same everywhere.
[[nodiscard]] inline bool isReturn(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}
