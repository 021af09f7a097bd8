// SPDX-License-Identifier: MIT

#include "html-page-check_p.h"

#include "html-layout-cost_p.h"
#include "html-parse-cost_p.h"

#include <QPixmap>
#include <QTextDocument>

namespace {

// Nanoseconds, twice each.
constexpr double costOfMarkdownLine = 2 * 18;
constexpr double costOfMarkdownSlot = 20000;

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

// A list may have an item in each line, and a table as many columns in each as the widest has.
void chargeMarkdown(HtmlBudget &budget, const QString &text)
{
    double lines = 1;
    double columns = 0;
    double most = 0;
    for (const QChar c : text) {
        columns += c == QLatin1Char('|') ? 1 : 0;
        most = qMax(most, columns);
        if (c != QLatin1Char('\n'))
            continue;
        ++lines;
        columns = 0;
    }
    budget.charge(lines * lines / 2 * costOfMarkdownLine + lines * most * costOfMarkdownSlot);
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
