// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include "kovakit-qt/html/html-limits_p.h"
#include "kovakit-qt/html/html-scan_p.h"

#include <QRegularExpression>

// The scan of a page for its pictures against its definition, and what is shown of a page that is
// beyond the limits.

namespace {

constexpr int textLength = 64;
constexpr int wordLength = 7;

void checkScan(const QString &text)
{
    static const QRegularExpression base(QStringLiteral("<base href=\"([^\"]*)\""));
    // A source may hold the beginning of the next picture.
    static const QRegularExpression picture(
        QStringLiteral("<img(?:(?!src=\").)*src=\"(?=([^\"]*)\")"),
        QRegularExpression::DotMatchesEverythingOption);
    const HtmlPictureSources found = scanPictureSources(text);
    const auto baseMatch = base.match(text);
    expect(found.hasBase == baseMatch.hasMatch(), "the base is found where there is one");
    expectEqual(found.baseUrl, baseMatch.captured(1), "The base is another one.");
    QStringList sources;
    auto match = picture.match(text, qMax(0, baseMatch.capturedEnd() - 1));
    for (; found.hasBase && match.hasMatch(); match = picture.match(text, match.capturedEnd(0)))
        sources.append(match.captured(1));
    sources.removeDuplicates();
    expectEqual(found.sources.join(QLatin1Char('\n')), sources.join(QLatin1Char('\n')),
                "The pictures are others.");
}

void checkPlain(const QString &text)
{
    HtmlLimits limits = {};
    limits.textLength = textLength;
    limits.wordLength = wordLength;
    limits.layoutSteps = qint64(textLength) * 100;
    const QString shown = shownPlain(text, limits);
    const int ellipsis = shown.endsWith(QChar(0x2026)) ? 1 : 0;
    expect(shown.size() <= textLength + ellipsis, "a plain text keeps to its length");
    static const QRegularExpression tooLong(QStringLiteral("[A-Za-z]{%1}").arg(wordLength + 1));
    expect(!shown.contains(tooLong), "a plain text keeps to the length of its words");
    const auto inOneLine = [](QString lines) { return lines.remove(QLatin1Char('\n')); };
    if (inOneLine(shown) == inOneLine(text))
        return;
    expect(ellipsis == 1, "a plain text that is cut says so");
    expect(inOneLine(text).startsWith(inOneLine(shown.chopped(1))), "it is the text's beginning");
}

} // namespace

int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = textOf(data, size);
    checkScan(text);
    checkPlain(text);
    return 0;
}
