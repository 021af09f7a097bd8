// SPDX-License-Identifier: MIT

#pragma once

#include "bench.h"

// Sides that build a window full of one kind of widget and show it until it is painted.

// Makes the widget of that index, without a parent.
using MakeWidget = std::function<QWidget *(int)>;

// The milliseconds for a window of 200.
[[nodiscard]] Bench::Side buildAndShowTime(const MakeWidget &make);

// The heap bytes for each of them when they are shown.
[[nodiscard]] Bench::Side bytesPerWidget(const MakeWidget &make);
