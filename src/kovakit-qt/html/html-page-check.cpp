// SPDX-License-Identifier: MIT

#include "html-page-check_p.h"

#include "html-layout-cost_p.h"
#include "html-parse-cost_p.h"

#include <QPixmap>
#include <QTextDocument>

#include <algorithm>

namespace {

// Nanoseconds. Lines are read twice.
constexpr double costOfMarkdownLine = 2 * 18;
constexpr double costOfMarkdownSlotPair = 8000;

// A document that is read, but not shown: it has no pictures.
class UnseenDocument : public QTextDocument
{
public:
    UnseenDocument(HtmlBudget &budget, const HtmlPageCheck::Source &source,
                   const HtmlParseCost &cost)
        : m_budget(budget)
        , m_source(source)
        , m_cost(cost)
    {
        setUndoRedoEnabled(false);
        setDefaultFont(source.font);
        setDefaultStyleSheet(source.defaultStyle);
        setBaseUrl(source.base);
    }

    [[nodiscard]] QHash<QUrl, QByteArray> styleSheets() const { return m_styleSheets; }

protected:
    QVariant loadResource(int type, const QUrl &name) override
    {
        if (type != StyleSheetResource)
            return m_picture;
        const QByteArray bytes = m_source.readStyleSheet(name);
        const double cost = m_cost.ofStyleSheet(QString::fromUtf8(bytes));
        // One that has Qt read others could go on without end.
        if (bytes.contains("@import") || cost > m_budget.left())
            return QByteArray();
        m_budget.charge(cost);
        m_styleSheets.insert(name, bytes);
        return bytes;
    }

private:
    HtmlBudget &m_budget;
    const HtmlPageCheck::Source &m_source;
    const HtmlParseCost &m_cost;
    const QPixmap m_picture{1, 1};
    QHash<QUrl, QByteArray> m_styleSheets;
};

// A list may have an item in each line. Lines up to the next blank one may be rows of a table with
// as many columns as the widest has bars, and a text edit lays out all that it has with each new
// cell.
void chargeMarkdown(HtmlBudget &budget, const QString &text)
{
    double lines = 0;
    double slots = 0;
    double rows = 0;
    double bars = 0;
    for (const QStringView line : QStringView(text).split(QLatin1Char('\n'))) {
        ++lines;
        if (line.trimmed().isEmpty()) {
            slots += rows * bars;
            rows = bars = 0;
            continue;
        }
        ++rows;
        bars = qMax(bars, double(std::count(line.begin(), line.end(), QLatin1Char('|'))));
    }
    slots += rows * bars;
    budget.charge(lines * lines / 2 * costOfMarkdownLine + slots * slots * costOfMarkdownSlotPair);
}

} // namespace

HtmlPageCheck::HtmlPageCheck(const HtmlLimits &limits, Source source)
    : m_limits(limits)
    , m_source(std::move(source))
{
}

HtmlPageCheck::Result HtmlPageCheck::check(const QString &html) const
{
    HtmlBudget budget(m_limits);
    const HtmlParseCost cost(budget, html, m_source.defaultStyle);
    if (!budget.isKept())
        return {budget.steps(), {}};
    UnseenDocument document(budget, m_source, cost);
    document.setHtml(html);
    chargeLayout(budget, document);
    return {budget.steps(), document.styleSheets()};
}

HtmlPageCheck::Result HtmlPageCheck::checkMarkdown(const QString &text) const
{
    HtmlBudget budget(m_limits);
    const HtmlParseCost cost(budget, text, QString());
    chargeMarkdown(budget, text);
    if (!budget.isKept())
        return {budget.steps(), {}};
    UnseenDocument document(budget, m_source, cost);
    document.setMarkdown(text);
    chargeLayout(budget, document);
    return {budget.steps(), {}};
}
