// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include "kovakit-qt/html/html-page-check_p.h"

#include <kovakit-qt/widgets/html-text-browser.h>

#include <QAbstractTextDocumentLayout>
#include <QTextDocument>
#include <QVector>

#include <ctime>

// The time that Qt takes to lay out a page that is within the limits.

namespace {

constexpr HtmlLimits limits = {
    HtmlTextBrowser::maxTextLength,
    HtmlTextBrowser::maxWordLength,
    HtmlTextBrowser::maxOpenElements,
    HtmlTextBrowser::maxLayoutSteps,
};

// Two seconds of the processor are four times what a page may take: other programs push this one
// out of the caches, and the first page fetches the fonts.
constexpr std::clock_t mostTicks = 2 * CLOCKS_PER_SEC;

// In an input, what stands between these two is repeated as often as the byte after the second one
// says, so that few bytes make a large page.
constexpr char groupBegin = 2;
constexpr char groupEnd = 1;
constexpr int mostBytes = 200000;

QByteArray expanded(const QByteArray &input)
{
    QByteArray page;
    QVector<int> begins = {0};
    for (int i = 0; i < input.size(); ++i) {
        if (input.at(i) == groupBegin) {
            begins.append(page.size());
        } else if (input.at(i) == groupEnd && i + 1 < input.size()) {
            const QByteArray group = page.mid(begins.size() > 1 ? begins.takeLast() : 0);
            const int times = uchar(input.at(++i));
            for (int k = 0; k < times && page.size() + group.size() < mostBytes; ++k)
                page += group;
        } else {
            page += input.at(i);
        }
    }
    return page;
}

QByteArray noStyleSheet(const QUrl &)
{
    return QByteArray();
}

} // namespace

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzing(argc, argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString page = QString::fromUtf8(expanded(bytesOf(data, size)));
    const std::clock_t begin = std::clock();
    const HtmlPageCheck check(limits, {QUrl(), QString(), QFont(), noStyleSheet});
    const qint64 steps = check.check(page).steps;
    expect(std::clock() - begin < mostTicks, "a page is checked in time");
    if (steps > limits.layoutSteps)
        return 0;
    QTextDocument document;
    document.setPageSize({500, -1});
    document.setHtml(page);
    document.documentLayout()->documentSize();
    expect(std::clock() - begin < mostTicks, "a page within the limits is laid out in time");
    return 0;
}
