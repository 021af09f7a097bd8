// SPDX-License-Identifier: MIT

#include "html-layout-cost_p.h"

#include <QFont>
#include <QHash>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

namespace {

// Nanoseconds, measured with texts of that one thing: from setting the text, which has Qt lay it
// out about three times, to its first picture on the screen. Tables double what is in them.
constexpr double costOfBlock = 7000;
constexpr double costOfBlockInTable = 10000;
constexpr double costOfSlot = 9000;
constexpr double costOfSlotWithSharedBorder = 23000;
constexpr double costOfFragment = 3000;
constexpr double costOfFont = 450000;
constexpr double costOfHugeLetter = 2000;
// For each one that stands before it in the same place.
constexpr double costOfFloat = 6000;

constexpr int mostNestedTables = 30;
// Pixels or points.
constexpr qreal largestOrdinaryFont = 150;

class LayoutCharge
{
public:
    LayoutCharge(HtmlBudget &budget, const QTextDocument &document)
        : m_budget(budget)
        , m_document(document)
    {
    }

    void run() { charge(m_document.rootFrame(), 0); }

private:
    // Where floats push each other about.
    using Place = QPair<const QTextFrame *, int>;

    void charge(QTextFrame *frame, int tables);
    void chargeGrid(const QTextTable &table, double weight);
    void chargeBlock(const QTextBlock &block, int tables);
    void chargeFragment(const QTextFragment &fragment, double weight);
    void chargeText(const QString &text, double weight);
    void chargeFloat(const Place &place, double weight);
    Place placeOf(QTextFrame *frame, int position) const;

    HtmlBudget &m_budget;
    const QTextDocument &m_document;
    QHash<Place, int> m_floats;
    QSet<int> m_formats;
    QSet<QString> m_fonts;
    HtmlLetterCost m_letterCost;
    QTextFrame *m_frame = nullptr;
};

void LayoutCharge::charge(QTextFrame *frame, int tables)
{
    const auto *table = qobject_cast<const QTextTable *>(frame);
    tables += table ? 1 : 0;
    if (tables > mostNestedTables)
        m_budget.exceed();
    const double weight = double(qint64(1) << tables);
    if (table)
        chargeGrid(*table, weight);
    for (auto it = frame->begin(); m_budget.isKept() && !it.atEnd(); ++it) {
        QTextFrame *child = it.currentFrame();
        m_frame = frame;
        if (!child) {
            chargeBlock(it.currentBlock(), tables);
            continue;
        }
        if (child->frameFormat().position() != QTextFrameFormat::InFlow)
            chargeFloat(placeOf(frame, child->firstPosition()), weight);
        charge(child, tables);
    }
}

void LayoutCharge::chargeGrid(const QTextTable &table, double weight)
{
    const double slotCost =
        table.format().borderCollapse() ? costOfSlotWithSharedBorder : costOfSlot;
    m_budget.charge(double(table.rows()) * table.columns() * slotCost * weight);
}

void LayoutCharge::chargeBlock(const QTextBlock &block, int tables)
{
    const double weight = double(qint64(1) << tables);
    m_budget.charge((tables > 0 ? costOfBlockInTable : costOfBlock) * weight);
    m_letterCost.beginLine();
    for (auto it = block.begin(); m_budget.isKept() && !it.atEnd(); ++it)
        chargeFragment(it.fragment(), weight);
}

void LayoutCharge::chargeFragment(const QTextFragment &fragment, double weight)
{
    m_budget.charge(costOfFragment * weight);
    const QTextCharFormat format = fragment.charFormat();
    const QFont font = format.font();
    if (!m_formats.contains(fragment.charFormatIndex())) {
        m_formats.insert(fragment.charFormatIndex());
        const QString key = font.toString() + font.families().join(QLatin1Char(','));
        if (!m_fonts.contains(key))
            m_budget.charge(costOfFont);
        m_fonts.insert(key);
    }
    if (font.pixelSize() > largestOrdinaryFont || font.pointSizeF() > largestOrdinaryFont)
        m_budget.charge(fragment.length() * costOfHugeLetter * weight);
    chargeText(fragment.text(), weight);

    // Each float has an object of its own.
    const auto *frame = qobject_cast<QTextFrame *>(m_document.objectForFormat(format));
    if (frame && frame->frameFormat().position() != QTextFrameFormat::InFlow) {
        for (int i = 0; m_budget.isKept() && i < fragment.length(); ++i)
            chargeFloat(placeOf(m_frame, fragment.position()), weight);
    }
}

void LayoutCharge::chargeText(const QString &text, double weight)
{
    for (int at = 0; m_budget.isKept() && at < text.size();) {
        m_budget.charge(m_letterCost(nextLetter(text, at)) * weight);
        if (m_letterCost.word() > m_budget.limits().wordLength)
            m_budget.exceed();
    }
}

LayoutCharge::Place LayoutCharge::placeOf(QTextFrame *frame, int position) const
{
    const auto *table = qobject_cast<const QTextTable *>(frame);
    return {frame, table ? table->cellAt(position).firstPosition() : 0};
}

void LayoutCharge::chargeFloat(const Place &place, double weight)
{
    m_budget.charge(++m_floats[place] * costOfFloat * weight);
}

} // namespace

void chargeLayout(HtmlBudget &budget, const QTextDocument &document)
{
    LayoutCharge(budget, document).run();
}
