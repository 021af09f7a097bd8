// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QSize>

// Whether pictures of @p format, as QImageReader calls it, may be decoded: only formats that are
// pixels and nothing else. A drawing can name further files, and an icon file can hold a picture of
// another size than it says.
[[nodiscard]] bool isPixelFormat(const QByteArray &format);

// What it takes to look at @p byteCount bytes and to tell their format and size, in nanoseconds.
[[nodiscard]] double costOfLooking(qint64 byteCount);

// What it takes to read the size of a picture out of @p bytes, which are of @p format.
[[nodiscard]] double costOfHeader(const QByteArray &bytes, const QByteArray &format);

// What it takes then to decode the picture, which has @p size; infinite for one that is coded in a
// way whose time nobody can tell.
[[nodiscard]] double costOfDecoding(const QByteArray &bytes, const QByteArray &format,
                                    const QSize &size);
