// SPDX-License-Identifier: MIT

#include "close-button-hold_p.h"

#include <kovakit-qt/platform/shapi-linux.h>

#include <QHash>

namespace {

struct HeldWindow
{
    int holds = 0;
    void *hints = nullptr;
};

QHash<QWidget *, HeldWindow> &heldWindows()
{
    static QHash<QWidget *, HeldWindow> windows;
    return windows;
}

} // namespace

void CloseButtonHold::take(QWidget *window)
{
    if (m_window != window) {
        release();
        m_window = window;
        ++heldWindows()[window].holds;
    }
    HeldWindow &held = heldWindows()[window];
    if (!held.hints)
        SHAPISetCloseButtonOfWindowEnable(window, false, &held.hints);
}

void CloseButtonHold::release()
{
    if (!m_window)
        return;
    QWidget *const window = std::exchange(m_window, nullptr);
    HeldWindow &held = heldWindows()[window];
    if (--held.holds > 0)
        return;
    SHAPISetCloseButtonOfWindowEnable(window, true, &held.hints);
    heldWindows().remove(window);
}
