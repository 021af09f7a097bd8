// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QColor>
#include <QSize>

// The bytes of a PNG file with a picture of one colour.
QByteArray pngFile(const QSize &size, const QColor &color = Qt::red);
