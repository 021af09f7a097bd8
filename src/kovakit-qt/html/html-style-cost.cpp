// SPDX-License-Identifier: MIT

#include "html-style-cost_p.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

// Nanoseconds.
constexpr double costOfSheet = 150;
constexpr double costOfSelector = 200;
constexpr double costOfDeclaration = 60;
constexpr double costOfAncestor = 50;
constexpr double costOfSibling = 0.3;
constexpr double costOfAttributes = 40;
// Beyond what attributes usually have.
constexpr double costOfAttributeCharacter = 10;
constexpr int ordinaryAttributes = 30;

bool isSpaceOrCombinator(QChar c)
{
    return c.isSpace() || c == QLatin1Char('>') || c == QLatin1Char('+') || c == QLatin1Char('~');
}

// What the last part of a selector asks for. Without either, it counts for every element, as it
// does if it asks for something else besides.
struct Subject
{
    QString element;
    QString firstClass;
};

Subject subjectOf(const QString &selector)
{
    static const QRegularExpression subject(
        QStringLiteral("(?:^|[\\s>+~])([\\w-]*)(\\.[\\w-]+)?(?:[.:][\\w.:-]*)?$"));
    const bool isOdd = selector.contains(QLatin1Char('[')) || selector.contains(QLatin1Char('('));
    const QRegularExpressionMatch match =
        isOdd ? QRegularExpressionMatch() : subject.match(selector);
    return {match.captured(1).toLower(), match.captured(2)};
}

} // namespace

void HtmlStyleCost::add(const QString &css)
{
    static const QRegularExpression commentOrString(
        QStringLiteral(R"(/\*.*?\*/|"[^"\\\x00-\x1f]*"|'[^'\\\x00-\x1f]*')"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression special(QStringLiteral("[\"'\\\\@<]|/\\*"));
    QString rules = css;
    rules.replace(commentOrString, QStringLiteral("|"));
    const bool isPlain = !rules.contains(special);
    if (!isPlain)
        rules = css;

    m_universal.each += costOfSheet;
    int begin = 0;
    while (begin < rules.size()) {
        int brace = rules.indexOf(QLatin1Char('{'), begin);
        brace = brace < 0 ? rules.size() : brace;
        int end = rules.indexOf(QLatin1Char('}'), brace);
        end = end < 0 ? rules.size() : end;
        const int declarations = rules.mid(brace, end - brace).count(QLatin1Char(':'));
        addRule(rules.mid(begin, (isPlain ? brace : end) - begin), declarations * costOfDeclaration,
                isPlain);
        begin = end + 1;
    }
}

void HtmlStyleCost::addRule(const QString &selectors, double declarations, bool isPlain)
{
    for (const QString &selector : selectors.split(QLatin1Char(',')))
        addSelector(selector.trimmed(), declarations, isPlain);
}

void HtmlStyleCost::addSelector(const QString &selector, double declarations, bool isPlain)
{
    const Subject subject = isPlain ? subjectOf(selector) : Subject();
    Rules &tried = subject.element.isEmpty() ? m_universal : m_ofKey[subject.element];
    tried.withAttributes +=
        selector.contains(QLatin1Char('.')) || selector.contains(QLatin1Char('['));
    Rules &fitting = subject.firstClass.isEmpty() ? tried : m_ofKey[subject.firstClass];
    fitting.each += costOfSelector + declarations;
    fitting.forAncestors += std::any_of(selector.cbegin(), selector.cend(), isSpaceOrCombinator);
    fitting.forSiblings += selector.count(QLatin1Char('+'));
    fitting.forAllSiblings += selector.count(QLatin1Char('~'));
}

double HtmlStyleCost::of(const Rules &rules, const Element &element)
{
    const int extraLength = qMax(0, element.attributeLength - ordinaryAttributes);
    return rules.each
         + rules.withAttributes * (costOfAttributes + extraLength * costOfAttributeCharacter)
         + rules.forAncestors * element.depth * costOfAncestor
         + (rules.forSiblings + rules.forAllSiblings * element.before) * element.before
               * costOfSibling;
}

double HtmlStyleCost::of(const Element &element) const
{
    double cost = of(m_universal, element);
    for (const QString &key : element.keys) {
        const auto found = m_ofKey.constFind(key);
        cost += found == m_ofKey.cend() ? 0 : of(*found, element);
    }
    return cost;
}
