// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

/**
 * The display scale, measured once and fixed for the rest of the process.
 *
 * Every size in the library is written down in design pixels, the pixels of a 96-dpi screen, and
 * turned into the pixels of this display with kovaPx() or kovaPxRounded() at the moment of use.
 * The first getInstance() needs the QApplication to exist. GUI thread only.
 */
class KOVAKIT_EXPORT DPIinfo
{
public:
    /** The one instance of the process; the first call measures the desktop. */
    static DPIinfo *getInstance();

    /**
     * The display scale: the desktop's logical dots per inch divided by 96.
     *
     * A factor in spite of the name: 1.0 at 96 dpi, 1.25 at 120, 1.5 at 144, 2.0 at 192.
     */
    [[nodiscard]] double getDPI() const;

    /** Device pixels per logical pixel of the desktop, a whole number. */
    [[nodiscard]] double getDPR() const;

    /**
     * @p text with every pixel length in it ("12px", "1.5px") multiplied by getDPI() and cut to a
     * whole number.
     *
     * The unit must be written "px"; lengths inside names count too. A length of more than three
     * characters before the unit comes out garbled, with its tail scaled once more, so style texts
     * keep lengths to three characters. Numbers beyond the range of an int count as the largest
     * int. Takes time linear in the text, whatever the text.
     */
    [[nodiscard]] QString getScaledStyleSheet(QString text) const;

private:
    DPIinfo();
    Q_DISABLE_COPY(DPIinfo)

    double m_scale;
    double m_devicePixelRatio;
};

/** @p designPixels in the pixels of this display, truncated toward zero: for sizes and margins. */
[[nodiscard]] KOVAKIT_EXPORT int kovaPx(double designPixels);

/** @p designPixels in the pixels of this display, rounded: for the sizes of icons and movies. */
[[nodiscard]] KOVAKIT_EXPORT int kovaPxRounded(double designPixels);
