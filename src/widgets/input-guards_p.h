#pragma once

class QWidget;

// Leaves the wheel to what lies around @p field, such as a page that scrolls, as long as @p field
// has no focus, and keeps the wheel from giving it the focus.
void passWheelWithoutFocus(QWidget *field);
