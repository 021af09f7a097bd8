// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QRgb>
#include <QSize>
#include <QVector>

class QImage;

/**
 * Builds an endlessly repeating GIF animation. Every frame replaces the one before it.
 */
class GifWriter
{
public:
    /**
     * Starts a movie of the given size in pixels that shows each frame for so many hundredths of a
     * second. It may use a transparent pixel and the given opaque colors, at most 255 of them.
     */
    GifWriter(const QSize &size, int hundredthsPerFrame, const QVector<QRgb> &colors);

    /** Adds a frame of the movie's size; each pixel takes the nearest of the movie's colors. */
    void addFrame(const QImage &frame);

    /** The bytes of the whole file. */
    [[nodiscard]] QByteArray result() const;

private:
    QSize m_size;
    int m_hundredthsPerFrame;
    QVector<QRgb> m_colors;
    QByteArray m_frames;
};
