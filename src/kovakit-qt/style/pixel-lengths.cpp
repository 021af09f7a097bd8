// SPDX-License-Identifier: MIT

#include "pixel-lengths_p.h"

#include <QVector>

#include <iterator>
#include <limits>

namespace {

constexpr QLatin1String unit("px", 2);

// An int has ten digits at most; more of them before the point are out of its range.
constexpr int maxIntegerDigits = 10;
// Digits that can still influence how a decimal number rounds to a double.
constexpr int maxFractionDigits = 800;

// How far behind the start of one match the search for the next one begins.
constexpr int resumeDistance = 3;

// A number directly before a "px": digits, or digits, a point and perhaps more digits.
struct Length
{
    int start; // of the whole number
    int point; // of the point, or end when there is none
    int end; // of the number, where "px" begins
};

int digitsBefore(const QString &text, int end, int limit)
{
    int start = end;
    while (start > limit && text.at(start - 1).isDigit())
        --start;
    return start;
}

// The number that ends at @p end and does not reach back over @p limit; empty if there is none.
Length lengthBefore(const QString &text, int end, int limit)
{
    const int digits = digitsBefore(text, end, limit);
    if (digits > limit && text.at(digits - 1) == QLatin1Char('.')) {
        const int whole = digitsBefore(text, digits - 1, limit);
        if (whole < digits - 1)
            return {whole, digits - 1, end};
    }
    return {digits, end, end};
}

// Evaluates the suffixes of one length. What has to be known about the digits after a position is
// gathered once, so that a run of a million digits costs one pass and not a pass per suffix.
class SuffixValue
{
public:
    SuffixValue(const QString &text, const Length &length)
        : m_text(text)
        , m_length(length)
    {
        m_afterLastForeign = length.end;
        while (m_afterLastForeign > length.start && !isForeign(m_afterLastForeign - 1))
            --m_afterLastForeign;
        m_significant = length.start;
    }

    // The number from @p from on times @p scale; the positions must come in rising order.
    int scaled(int from, double scale)
    {
        // Number parsing knows ASCII digits only: others make the whole number count as 0.
        if (from < m_afterLastForeign)
            return 0;
        const int integerEnd = from <= m_length.point ? m_length.point : m_length.end;
        m_significant = qMax(m_significant, from);
        while (m_significant < integerEnd && m_text.at(m_significant) == QLatin1Char('0'))
            ++m_significant;
        if (integerEnd - m_significant > maxIntegerDigits)
            return scale > 0 ? std::numeric_limits<int>::max() : 0;

        const int first = qMin(m_significant, integerEnd);
        const int last = qMin(m_length.end, integerEnd + 1 + maxFractionDigits);
        const QString number = QLatin1Char('0') + m_text.mid(first, last - first);
        const double value = number.toDouble() * scale;
        if (value >= std::numeric_limits<int>::max())
            return std::numeric_limits<int>::max();
        return int(value);
    }

private:
    [[nodiscard]] bool isForeign(int position) const
    {
        const QChar c = m_text.at(position);
        return c.isDigit() && c > QLatin1Char('9');
    }

    const QString &m_text;
    const Length m_length;
    int m_afterLastForeign;
    int m_significant;
};

// The value of a number that is written as nearly all are, with one to three ASCII digits; -1 for
// any other.
int plainValue(const QString &text, const Length &length)
{
    if (length.point != length.end || length.end - length.start > resumeDistance)
        return -1;
    int value = 0;
    for (int i = length.start; i < length.end; ++i) {
        const ushort c = text.at(i).unicode();
        if (c > '9')
            return -1;
        value = value * 10 + (c - '0');
    }
    return value;
}

void appendNumber(QString &text, int number)
{
    QChar digits[std::numeric_limits<int>::digits10 + 1];
    QChar *const end = std::end(digits);
    QChar *begin = end;
    do {
        *--begin = QLatin1Char(char('0' + number % 10));
        number /= 10;
    } while (number > 0);
    text.append(begin, int(end - begin));
}

// The position of the next "px" from @p from on, or -1. Its second letter is the rare one.
int nextUnit(const QString &text, int from)
{
    for (int x = text.indexOf(QLatin1Char('x'), from + 1); x >= 0;
         x = text.indexOf(QLatin1Char('x'), x + 1)) {
        if (text.at(x - 1) == QLatin1Char('p'))
            return x - 1;
    }
    return -1;
}

struct Piece
{
    int start;
    int length;
};

// A text cut at its lengths: what stands before each of them and, as the last piece, after them.
struct CutText
{
    QVector<Piece> pieces;
    QVector<Length> lengths;
};

CutText cutAtLengths(const QString &text)
{
    CutText cut;
    int pieceStart = 0;
    for (int at = nextUnit(text, 0); at >= 0; at = nextUnit(text, at + unit.size())) {
        const Length length = lengthBefore(text, at, pieceStart);
        if (length.start == length.end)
            continue;
        cut.pieces.append({pieceStart, length.start - pieceStart});
        cut.lengths.append(length);
        pieceStart = at + unit.size();
    }
    cut.pieces.append({pieceStart, text.size() - pieceStart});
    return cut;
}

// Puts the text together again. Each value takes the next piece with it, whichever length the value
// is from: after a length with several values the pieces stand too early, and they run out.
class Assembly
{
public:
    Assembly(const QString &text, const CutText &cut)
        : m_text(text)
        , m_pieces(cut.pieces)
    {
        // Few lengths get more than one digit longer, and every widget keeps its text.
        m_result.reserve(text.size() + cut.lengths.size());
    }

    void append(int value)
    {
        appendPiece();
        appendNumber(m_result, value);
        m_result.append(unit);
    }

    QString finished()
    {
        appendPiece();
        return m_result;
    }

private:
    void appendPiece()
    {
        if (m_next == m_pieces.size())
            return;
        const Piece &piece = m_pieces.at(m_next++);
        m_result.append(m_text.constData() + piece.start, piece.length);
    }

    const QString &m_text;
    const QVector<Piece> m_pieces;
    int m_next = 0;
    QString m_result;
};

// Appends the value of each suffix that the stepping search finds: of "1234px" those of "1234px"
// and of "4px".
void appendSuffixes(Assembly &assembly, const QString &text, const Length &length, double scale)
{
    SuffixValue value(text, length);
    int from = length.start;
    while (from < length.end) {
        assembly.append(value.scaled(from, scale));
        from += resumeDistance;
        // A match begins with a digit.
        if (from == length.point)
            ++from;
    }
}

} // namespace

QString scalePixelLengths(const QString &text, double scale)
{
    const CutText cut = cutAtLengths(text);
    if (cut.lengths.isEmpty())
        return text;

    Assembly assembly(text, cut);
    for (const Length &length : cut.lengths) {
        const int plain = plainValue(text, length);
        if (plain >= 0)
            assembly.append(int(plain * scale));
        else
            appendSuffixes(assembly, text, length, scale);
    }
    const QString result = assembly.finished();
    // At scale 1 the widgets of one kind share one text.
    return result == text ? text : result;
}
