// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>

// The ways in which a person uses a window.
enum class WindowUse {
    None, // Not a use: painting, layout, the focus that moves ...
    Pointer, // Mouse, wheel, touch, tablet, and what they bring up.
    Typing, // Keys and the text of input methods.
    Drag, // Something is dragged over the window or dropped on it.
};

[[nodiscard]] WindowUse useOf(QEvent::Type type);
