// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

// Leaves the wheel to what lies around @p field, such as a page that scrolls, as long as @p field
// has no focus, and keeps the wheel from giving it the focus.
void passWheelWithoutFocus(QWidget *field);

// Keeps clicks from @p popup, or a part of one, that were made while it was on the screen but come
// after it was hidden, when the program is busy: they are for what the user saw, and a menu looks
// them up by the places of entries that it may have lost. May be called again for the same widget.
void dropLateClicks(QWidget *popup);
