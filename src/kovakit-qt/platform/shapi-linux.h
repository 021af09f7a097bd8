// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

class QWidget;

/**
 * Takes the window manager's functions (close, move, resize by the frame) from the window of
 * @p widget, or gives them back.
 *
 * With @p enable false the hints that the window had are kept in a new block, whose address goes to
 * @p saved; a block that was there before is lost. With @p enable true they are restored, the block
 * is freed and @p saved becomes null; when nothing is saved, nothing happens. So pass the address
 * of a pointer that starts as null, and call in pairs.
 *
 * Does nothing for a window that was never shown, when no display can be reached, on any platform
 * but xcb, and in a build without X11. The display connection of a call stays open until the next
 * call, so the process holds one at most.
 */
KOVAKIT_EXPORT void SHAPISetCloseButtonOfWindowEnable(QWidget *widget, bool enable, void **saved);
