// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include "kovakit-qt/style/pixel-lengths_p.h"

#include <QRegularExpression>

#include <iterator>
#include <limits>

// The scaled style text against the search that defines it.

namespace {

constexpr double scales[] = {1, 1.25, 1.5, 2, 0.75, 100 / 96.0};

int scaledNumber(const QString &digits, double scale)
{
    // A number that is out of a double's range is no failure of the text's author to write one.
    bool isNumber = false;
    const double value = digits.toDouble(&isNumber) * scale;
    if (!isNumber && qIsInf(value))
        return std::numeric_limits<int>::max();
    return value >= std::numeric_limits<int>::max() ? std::numeric_limits<int>::max() : int(value);
}

QString scaledByDefinition(const QString &text, double scale)
{
    // Digits that take two code units do not count.
    static const QRegularExpression length(
        QStringLiteral("((?:(?![\\x{10000}-\\x{10ffff}])\\p{Nd})+\\.?"
                       "(?:(?![\\x{10000}-\\x{10ffff}])\\p{Nd})*)px"));
    const QStringList pieces = text.split(length);
    QString result;
    int piece = 0;
    for (auto match = length.match(text); match.hasMatch();
         match = length.match(text, match.capturedStart() + 3)) {
        result += pieces.value(piece++);
        result += QStringLiteral("%1px").arg(scaledNumber(match.captured(1), scale));
    }
    return result + pieces.value(piece);
}

} // namespace

int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const double scale = scales[data[0] % std::size(scales)];
    const QString text = textOf(data + 1, size - 1);
    expectEqual(scalePixelLengths(text, scale), scaledByDefinition(text, scale),
                "The text is scaled otherwise than it is defined.");
    return 0;
}
