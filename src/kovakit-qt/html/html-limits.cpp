// SPDX-License-Identifier: MIT

#include "html-limits_p.h"

namespace {

// Nanoseconds, measured with texts of nothing else.
constexpr double costOfLetter = 500;
constexpr double costOfForeignLetter = 1600;
constexpr double costOfIdeograph = 2000;
constexpr double costBeyondPlane = 18000;
constexpr double costOfMarkAlone = 1600;
constexpr double costOfTab = 2500;
constexpr double costOfScriptChange = 3000;
constexpr double costOfLine = 9000;
// For each one that stands before it in the same word or above the same letter.
constexpr double costOfMark = 4;
constexpr double costOfScriptChangeInWord = 14;
constexpr double costOfLetterInWord = 0.18;

constexpr int mostMarksInPlainText = 100;

constexpr uint firstForeign = 0x0590;
// Chinese, Japanese and Korean break anywhere.
constexpr uint firstIdeograph = 0x2E80;

bool isPlaceToBreak(uint letter)
{
    constexpr uint spaceWithoutWidth = 0x200B;
    return (QChar::isSpace(letter) && letter != QChar::Nbsp) || letter == spaceWithoutWidth
        || (letter >= firstIdeograph && !QChar::isMark(letter));
}

double ofLetterAlone(uint letter)
{
    if (QChar::requiresSurrogates(letter))
        return costBeyondPlane;
    if (QChar::isMark(letter))
        return costOfMarkAlone;
    if (letter == '\t')
        return costOfTab;
    if (letter < firstForeign)
        return costOfLetter;
    return letter < firstIdeograph ? costOfForeignLetter : costOfIdeograph;
}

} // namespace

double HtmlLetterCost::operator()(uint letter)
{
    m_word = isPlaceToBreak(letter) ? 0 : m_word + 1;
    m_marks = QChar::isMark(letter) ? m_marks + 1 : 0;
    double cost = ofLetterAlone(letter) + m_word * costOfLetterInWord + m_marks * costOfMark;
    const QChar::Script script = QChar::script(letter);
    if (script > QChar::Script_Common && script != m_script) {
        m_script = script;
        cost += costOfScriptChange + m_word * costOfScriptChangeInWord;
    }
    return cost;
}

void HtmlLetterCost::beginLine()
{
    m_word = 0;
    m_marks = 0;
}

uint nextLetter(const QString &text, int &at)
{
    const QChar first = text.at(at++);
    if (!first.isHighSurrogate() || at == text.size() || !text.at(at).isLowSurrogate())
        return first.unicode();
    return QChar::surrogateToUcs4(first, text.at(at++));
}

QString shownPlain(const QString &text, const HtmlLimits &limits)
{
    QString shown;
    shown.reserve(qMin(text.size(), limits.textLength));
    HtmlBudget budget(limits);
    HtmlLetterCost cost;
    for (int at = 0; at < text.size();) {
        const int begin = at;
        const uint letter = nextLetter(text, at);
        budget.charge(cost(letter) + (letter == '\n' ? costOfLine : 0));
        const bool isBroken =
            cost.word() > limits.wordLength || cost.marks() > mostMarksInPlainText;
        const int added = (isBroken ? 1 : 0) + at - begin;
        if (shown.size() + added > limits.textLength || !budget.isKept())
            return shown + QChar(0x2026);
        if (isBroken) {
            shown.append(QLatin1Char('\n'));
            cost.beginLine();
            budget.charge(costOfLine + cost(letter));
        }
        shown.append(QStringView(text).mid(begin, at - begin));
    }
    return shown;
}
