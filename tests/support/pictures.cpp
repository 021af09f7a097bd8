// SPDX-License-Identifier: MIT

#include "pictures.h"

#include <QBuffer>
#include <QImage>

QByteArray pngFile(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}
