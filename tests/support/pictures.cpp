// SPDX-License-Identifier: MIT

#include "pictures.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

QByteArray pngFile(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

QByteArray hugePngFile()
{
    QByteArray bytes = pngFile({8, 8});
    bytes.replace(16, 8, QByteArray::fromHex("0000753000007530"));
    // The header's checksum covers its name and its 13 bytes.
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes.mid(12, 17)) {
        sum ^= uchar(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum & 1 ? (sum >> 1) ^ 0xEDB88320 : sum >> 1;
    }
    qToBigEndian(~sum, bytes.data() + 29);
    return bytes;
}
