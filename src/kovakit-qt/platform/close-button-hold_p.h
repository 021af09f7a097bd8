// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

class QWidget;

// Keeps the window manager's functions away from a window for as long as somebody needs that. Holds
// of the same window may end in any order: what the window had before the first of them is given
// back with the last.
class CloseButtonHold
{
public:
    CloseButtonHold() = default;
    ~CloseButtonHold() { release(); }
    Q_DISABLE_COPY(CloseButtonHold)

    // Holds @p window instead of any other. Call it again for a window that is new on the screen:
    // there is nothing to take from one that was never shown.
    void take(QWidget *window);

    // Has to be called before the window is gone; its destroyed() signal is early enough.
    void release();

    [[nodiscard]] bool isTaken() const { return m_window; }

private:
    QWidget *m_window = nullptr;
};
