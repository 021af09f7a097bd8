// SPDX-License-Identifier: MIT

#include "gif-writer.h"

#include <QHash>
#include <QImage>

namespace {

constexpr int minimumCodeSize = 8;
constexpr int clearCode = 1 << minimumCodeSize;
constexpr int endCode = clearCode + 1;
constexpr int firstFreeCode = clearCode + 2;
constexpr int codeLimit = 4096;
constexpr char transparentIndex = 0;

void appendWord(QByteArray &bytes, int value)
{
    bytes.append(static_cast<char>(value & 0xff));
    bytes.append(static_cast<char>((value >> 8) & 0xff));
}

/** Packs codes of a growing width, lowest bit first. */
class CodeStream
{
public:
    void append(int code, int width)
    {
        m_pending |= static_cast<quint32>(code) << m_pendingBits;
        m_pendingBits += width;
        while (m_pendingBits >= 8)
            flushByte();
    }

    QByteArray finish()
    {
        if (m_pendingBits > 0)
            flushByte();
        return m_bytes;
    }

private:
    void flushByte()
    {
        m_bytes.append(static_cast<char>(m_pending & 0xff));
        m_pending >>= 8;
        m_pendingBits -= 8;
    }

    QByteArray m_bytes;
    quint32 m_pending = 0;
    int m_pendingBits = 0;
};

QByteArray compress(const QByteArray &pixels)
{
    CodeStream stream;
    QHash<int, int> codeOfString;
    int width = minimumCodeSize + 1;
    int nextCode = firstFreeCode;
    int prefix = -1;

    stream.append(clearCode, width);
    for (const char pixel : pixels) {
        const int value = static_cast<uchar>(pixel);
        if (prefix < 0) {
            prefix = value;
            continue;
        }
        const int string = (prefix << 8) | value;
        const auto known = codeOfString.constFind(string);
        if (known != codeOfString.constEnd()) {
            prefix = known.value();
            continue;
        }
        stream.append(prefix, width);
        prefix = value;
        if (nextCode == codeLimit) {
            stream.append(clearCode, width);
            codeOfString.clear();
            width = minimumCodeSize + 1;
            nextCode = firstFreeCode;
            continue;
        }
        if (nextCode == 1 << width)
            ++width;
        codeOfString.insert(string, nextCode++);
    }
    if (prefix >= 0)
        stream.append(prefix, width);
    stream.append(endCode, width);
    return stream.finish();
}

void appendBlocks(QByteArray &bytes, const QByteArray &data)
{
    constexpr int blockSize = 255;
    for (int start = 0; start < data.size(); start += blockSize) {
        const QByteArray block = data.mid(start, blockSize);
        bytes.append(static_cast<char>(block.size()));
        bytes.append(block);
    }
    bytes.append('\0');
}

} // namespace

GifWriter::GifWriter(const QSize &size, int hundredthsPerFrame, const QVector<QRgb> &colors)
    : m_size(size)
    , m_hundredthsPerFrame(hundredthsPerFrame)
    , m_colors({qRgba(0, 0, 0, 0)})
{
    m_colors += colors.mid(0, 255);
}

void GifWriter::addFrame(const QImage &frame)
{
    const QImage image = frame.convertToFormat(QImage::Format_ARGB32)
                             .convertToFormat(QImage::Format_Indexed8, m_colors);
    QByteArray pixels;
    pixels.reserve(m_size.width() * m_size.height());
    for (int y = 0; y < m_size.height(); ++y)
        pixels.append(reinterpret_cast<const char *>(image.constScanLine(y)), m_size.width());

    constexpr char graphicControl[] = {0x21, static_cast<char>(0xf9), 4};
    constexpr char restoreToBackgroundWithTransparency = (2 << 2) | 1;
    m_frames.append(graphicControl, sizeof graphicControl);
    m_frames.append(restoreToBackgroundWithTransparency);
    appendWord(m_frames, m_hundredthsPerFrame);
    m_frames.append(transparentIndex).append('\0');

    m_frames.append(',');
    appendWord(m_frames, 0);
    appendWord(m_frames, 0);
    appendWord(m_frames, m_size.width());
    appendWord(m_frames, m_size.height());
    m_frames.append('\0').append(static_cast<char>(minimumCodeSize));
    appendBlocks(m_frames, compress(pixels));
}

QByteArray GifWriter::result() const
{
    constexpr char globalTableOf256 = static_cast<char>(0xf7);
    constexpr char endlessLoop[] = "\x21\xff\x0bNETSCAPE2.0\x03\x01\x00\x00\x00";
    QByteArray table;
    for (const QRgb color : m_colors) {
        table.append(static_cast<char>(qRed(color)));
        table.append(static_cast<char>(qGreen(color)));
        table.append(static_cast<char>(qBlue(color)));
    }

    QByteArray bytes("GIF89a");
    appendWord(bytes, m_size.width());
    appendWord(bytes, m_size.height());
    bytes.append(globalTableOf256).append(transparentIndex).append('\0');
    bytes.append(table.leftJustified(3 * 256, '\0'));
    bytes.append(endlessLoop, sizeof endlessLoop - 1);
    return bytes.append(m_frames).append(';');
}
