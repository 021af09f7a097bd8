// SPDX-License-Identifier: MIT

#include "http-response_p.h"

#include <utility>

namespace {

// What a line around a chunk may have for nothing: the size and the end of the line.
constexpr int chunkSizeDigits = 16;
constexpr int chunkLineBytes = chunkSizeDigits + 2;

constexpr int versionBytes = 7; // "HTTP/1."
constexpr int statusAt = 9;
constexpr int statusEnd = 12;

bool hasToken(const QByteArray &list, const char *token)
{
    for (const QByteArray &part : list.split(',')) {
        if (qstricmp(part.trimmed().constData(), token) == 0)
            return true;
    }
    return false;
}

bool isNumber(const QByteArray &text)
{
    for (const char c : text) {
        if (c < '0' || c > '9')
            return false;
    }
    return !text.isEmpty();
}

} // namespace

void HttpResponse::add(const QByteArray &bytes)
{
    m_isUntouched = m_isUntouched && bytes.isEmpty();
    int at = 0;
    while (at < bytes.size() && m_state != Done && m_state != Failed)
        at += isInLine() ? addToLine(bytes, at) : addToContent(bytes, at);
    // Nobody has asked for more.
    if (at < bytes.size())
        m_isPersistent = false;
}

void HttpResponse::end()
{
    if (m_state != Done)
        m_state = m_state == OpenBody ? Done : Failed;
}

QByteArray HttpResponse::takeContent()
{
    return std::exchange(m_content, QByteArray());
}

bool HttpResponse::isInLine() const
{
    return m_state != CountedBody && m_state != OpenBody && m_state != ChunkBody;
}

int HttpResponse::allowance() const
{
    return m_state == ChunkSize || m_state == ChunkEnd ? chunkLineBytes : 0;
}

int HttpResponse::addToLine(const QByteArray &bytes, int at)
{
    const int end = bytes.indexOf('\n', at);
    const int count = (end < 0 ? bytes.size() : end + 1) - at;
    m_line.append(bytes.constData() + at, count);
    const int charged = qMax(0, m_line.size() - allowance());
    if (charged > m_budget) {
        m_state = Failed;
    } else if (end >= 0) {
        m_budget -= charged;
        QByteArray line = std::exchange(m_line, QByteArray());
        line.chop(line.endsWith("\r\n") ? 2 : 1);
        endLine(line);
    }
    return count;
}

int HttpResponse::addToContent(const QByteArray &bytes, int at)
{
    const int arrived = bytes.size() - at;
    const int count = m_state == OpenBody ? arrived : int(qMin<qint64>(m_left, arrived));
    m_content.append(bytes.constData() + at, count);
    m_left -= count;
    if (m_state == CountedBody && m_left == 0)
        m_state = Done;
    else if (m_state == ChunkBody && m_left == 0)
        m_state = ChunkEnd;
    return count;
}

void HttpResponse::endLine(const QByteArray &line)
{
    switch (m_state) {
    case StatusLine:
        m_state = line.isEmpty() ? StatusLine : afterStatus(line);
        break;
    case FieldLine:
        m_state = line.isEmpty() ? afterHead() : afterField(line);
        break;
    case ChunkSize:
        m_state = afterChunkSize(line);
        break;
    case ChunkEnd:
        m_state = line.isEmpty() ? ChunkSize : Failed;
        break;
    default:
        m_state = line.isEmpty() ? Done : Trailer;
    }
}

HttpResponse::State HttpResponse::afterStatus(const QByteArray &line)
{
    const QByteArray status = line.mid(statusAt, statusEnd - statusAt);
    if (!line.startsWith("HTTP/1.") || status.size() != 3 || !isNumber(status))
        return Failed;
    m_isPersistent = line.at(versionBytes) != '0';
    m_status = status.toInt();
    m_reason = line.mid(statusEnd).trimmed();
    return FieldLine;
}

HttpResponse::State HttpResponse::afterField(const QByteArray &line)
{
    if (line.startsWith(' ') || line.startsWith('\t')) {
        if (m_fields.isEmpty())
            return Failed;
        QByteArray &value = m_fields.last().second;
        value = (value + ' ' + line.trimmed()).trimmed();
        return FieldLine;
    }
    const int colon = line.indexOf(':');
    if (colon <= 0 || m_fields.size() == maxFields)
        return Failed;
    m_fields.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
    return FieldLine;
}

HttpResponse::State HttpResponse::afterHead()
{
    if (m_status < 200) {
        m_fields.clear();
        return m_status == 100 || m_status > 101 ? StatusLine : Failed;
    }
    m_isPersistent = m_isPersistent && !hasToken(value("Connection"), "close");
    if (m_status == 204 || m_status == 304)
        return Done;
    const QByteArray coding = value("Transfer-Encoding").toLower();
    const QByteArray length = value("Content-Length");
    if (!coding.isEmpty() && coding != "identity") {
        m_isPersistent = m_isPersistent && length.isEmpty();
        return coding == "chunked" ? ChunkSize : Failed;
    }
    if (length.isEmpty()) {
        m_isPersistent = false;
        return OpenBody;
    }
    bool isGood = isNumber(length);
    m_left = isGood ? length.toLongLong(&isGood) : 0;
    if (!isGood)
        return Failed;
    return m_left == 0 ? Done : CountedBody;
}

HttpResponse::State HttpResponse::afterChunkSize(const QByteArray &line)
{
    const int extension = line.indexOf(';');
    const QByteArray size = line.left(extension < 0 ? line.size() : extension).trimmed();
    bool isGood = size.size() <= chunkSizeDigits && !size.startsWith('-') && !size.startsWith('+');
    m_left = isGood ? size.toLongLong(&isGood, 16) : 0;
    if (!isGood || m_left < 0)
        return Failed;
    return m_left == 0 ? Trailer : ChunkBody;
}

// Fields of one name are one list.
QByteArray HttpResponse::value(const char *name) const
{
    QByteArray joined;
    for (const Field &field : m_fields) {
        if (qstricmp(field.first.constData(), name) == 0)
            joined += (joined.isEmpty() ? QByteArray() : QByteArray(", ")) + field.second;
    }
    return joined;
}
