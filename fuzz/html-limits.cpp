// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include "kovakit-qt/html/html-parse-cost_p.h"

#include <QTextDocument>
#include <QTextTable>

// What the walk through a text says that its tables cost, before Qt may read it, against the tables
// that Qt makes of it.

namespace {

constexpr int longestText = 300;
constexpr int mostSlots = 20000;
constexpr qint64 stepsOfSlot = 20;

qint64 slotsIn(const QTextFrame *frame)
{
    const auto *table = qobject_cast<const QTextTable *>(frame);
    qint64 count = table ? qint64(table->rows()) * table->columns() : 0;
    for (const QTextFrame *child : frame->childFrames())
        count += slotsIn(child);
    return count;
}

} // namespace

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzing(argc, argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = textOf(data, size).left(longestText);
    HtmlBudget budget({longestText, longestText, longestText, mostSlots * stepsOfSlot});
    const HtmlParseCost cost(budget, text, QString());
    if (!budget.isKept())
        return 0;
    QTextDocument document;
    document.setHtml(text);
    expect(slotsIn(document.rootFrame()) * stepsOfSlot <= budget.steps(),
           "a text has no larger tables than it costs");
    return 0;
}
