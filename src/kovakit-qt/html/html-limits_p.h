// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// What a text may have and still be laid out in seconds, not minutes. HtmlTextBrowser's constants
// of these names say the same to hosts.
struct HtmlLimits
{
    int textLength; // characters
    int wordLength; // letters in a row without a place to break the line
    int openElements; // inside each other
    int openTables; // inside each other: each one doubles the time
    int spannedColumns; // columns under cells of more than one column, in the whole text
    int listItems; // of all lists: each one costs as many steps as there are in its list
    qint64 styleSteps; // style rules times elements: each rule is tried on each element
};

// Whether @p html keeps to @p limits.
[[nodiscard]] bool isWithinLimits(const QString &html, const HtmlLimits &limits);

// @p text as it can be shown plain: too long words broken by line feeds, and cut at the length
// limit, behind which an ellipsis says so.
[[nodiscard]] QString shownPlain(const QString &text, const HtmlLimits &limits);
