// SPDX-License-Identifier: MIT

#include "html-picture-cost_p.h"

#include <QHash>
#include <QtEndian>

#include <limits>

namespace {

// Nanoseconds, each measured with the slowest picture of its kind that was found.
constexpr double costOfByte = 4;
constexpr double costOfByteOfText = 80;
constexpr double costOfJpegByte = 26;
constexpr double costOfJpegPixelInScan = 0.6;
constexpr double costOfDeepPngPixel = 29;
// Bytes of text or colour profile in a PNG file can unfold to a thousand times as many, of which
// the reader takes eight million at most.
constexpr double costOfUnfoldingByte = 3000;
constexpr double costOfUnfoldedChunk = 24e6;

// Of each pixel of a picture of that format; none for those that are not decoded.
double costOfPixel(const QByteArray &format)
{
    static const QHash<QByteArray, double> costs = {
        {"png", 17},  {"jpg", 7},  {"jpeg", 7}, {"gif", 7}, {"bmp", 16},
        {"webp", 29}, {"xpm", 29}, {"xbm", 20}, {"ppm", 7},
    };
    return costs.value(format);
}

bool isText(const QByteArray &bytes, const QByteArray &format)
{
    if (format == "xpm" || format == "xbm")
        return true;
    // Three kinds of these, by their second byte, are written in numbers.
    return format == "ppm" && bytes.mid(1, 1) < "4";
}

double costOfPngChunks(const QByteArray &bytes)
{
    constexpr int signature = 8;
    constexpr int frame = 12; // length, name and checksum
    double cost = 0;
    for (qint64 at = signature; at + frame <= bytes.size();) {
        const auto length = qFromBigEndian<quint32>(bytes.constData() + at);
        const QByteArray name = bytes.mid(int(at) + 4, 4);
        if (name == "zTXt" || name == "iTXt" || name == "iCCP")
            cost += qMin(length * costOfUnfoldingByte, costOfUnfoldedChunk);
        at += frame + qint64(length);
    }
    return cost;
}

bool isDeepPng(const QByteArray &bytes)
{
    constexpr int depthAt = 24;
    return bytes.size() > depthAt && bytes.at(depthAt) > 8;
}

// Whether the coefficients are coded by Huffman's method, all at once or in scans. The first marker
// of a frame says so, before any scan begins. A few markers have no length behind them.
bool isHuffmanJpeg(const QByteArray &bytes)
{
    for (qint64 at = 2; at + 3 < bytes.size();) {
        const auto byte = [&bytes](qint64 index) { return uchar(bytes.at(int(index))); };
        const uchar marker = byte(at + 1);
        if (byte(at) != 0xFF || marker == 0xFF || marker == 0) {
            ++at;
            continue;
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD9)) {
            at += 2;
            continue;
        }
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC)
            return marker <= 0xC2;
        at += 2 + qFromBigEndian<quint16>(bytes.constData() + at + 2);
    }
    return false;
}

double costOfJpeg(const QByteArray &bytes, double pixels)
{
    // Wherever these two bytes stand, a scan can begin: coded data cannot hold them.
    const int scans = bytes.count("\xFF\xDA");
    return isHuffmanJpeg(bytes)
             ? pixels * scans * costOfJpegPixelInScan + bytes.size() * costOfJpegByte
             : std::numeric_limits<double>::infinity();
}

} // namespace

bool isPixelFormat(const QByteArray &format)
{
    return costOfPixel(format) > 0;
}

double costOfLooking(qint64 byteCount)
{
    return double(byteCount) * costOfByte;
}

double costOfHeader(const QByteArray &bytes, const QByteArray &format)
{
    return isText(bytes, format) ? bytes.size() * costOfByteOfText : 0;
}

double costOfDecoding(const QByteArray &bytes, const QByteArray &format, const QSize &size)
{
    const double pixels = double(size.width()) * size.height();
    const double cost = pixels * costOfPixel(format);
    if (format == "png")
        return costOfPngChunks(bytes) + (isDeepPng(bytes) ? pixels * costOfDeepPngPixel : cost);
    return format == "jpg" || format == "jpeg" ? cost + costOfJpeg(bytes, pixels) : cost;
}
