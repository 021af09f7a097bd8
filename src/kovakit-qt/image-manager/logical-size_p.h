// SPDX-License-Identifier: MIT

#pragma once

class QPixmap;
class QSize;

// The size at which a button shows @p picture, which is given at the display's resolution: its
// pixels divided by the device pixel ratio, each to the nearest, half a pixel upwards.
QSize logicalSize(const QPixmap &picture);
