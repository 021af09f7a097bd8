// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QtGlobal>

// What a text may have and still be laid out. HtmlTextBrowser's constants of these names say the
// same to hosts.
struct HtmlLimits
{
    int textLength; // characters
    int wordLength; // letters in a row without a place to break the line
    int openElements; // inside each other
    qint64 layoutSteps; // of a microsecond each, to read the text and to lay it out
};

// Adds up what a text costs, and knows when that is too much. Costs are in nanoseconds.
class HtmlBudget
{
public:
    explicit HtmlBudget(const HtmlLimits &limits)
        : m_limits(limits)
    {
    }

    [[nodiscard]] const HtmlLimits &limits() const { return m_limits; }
    [[nodiscard]] bool isKept() const { return left() >= 0; }
    [[nodiscard]] double left() const { return double(m_limits.layoutSteps) * 1000 - m_cost; }
    // At most one more than the limit.
    [[nodiscard]] qint64 steps() const
    {
        return isKept() ? qint64(m_cost / 1000) : m_limits.layoutSteps + 1;
    }

    void charge(double nanoseconds) { m_cost += nanoseconds; }
    void exceed() { charge(left() + 1); }

private:
    HtmlLimits m_limits;
    double m_cost = 0;
};

// What letters cost one after another, in nanoseconds.
class HtmlLetterCost
{
public:
    // Of the next letter.
    double operator()(uint letter);

    // Begins a new word and a new letter.
    void beginLine();

    // How many letters stand in a row without a place to break the line between them, and how many
    // marks above and below one letter.
    [[nodiscard]] int word() const { return m_word; }
    [[nodiscard]] int marks() const { return m_marks; }

private:
    int m_word = 0;
    int m_marks = 0;
    QChar::Script m_script = QChar::Script_Common;
};

// The letter at @p at in @p text, which may take two units; moves @p at past it.
[[nodiscard]] uint nextLetter(const QString &text, int &at);

// @p text as it can be shown plain: too long words and too many marks broken by line feeds, and cut
// at the length limit or where it would take too many steps, behind which an ellipsis says so.
[[nodiscard]] QString shownPlain(const QString &text, const HtmlLimits &limits);
