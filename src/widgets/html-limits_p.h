#pragma once

#include <QString>

// How much text is shown at all, in characters.
constexpr int maxTextLength = 500000;
// Letters in a row without a place to break the line.
constexpr int maxWordLength = 5000;
// Elements open inside each other, and tables among them: each table doubles the layout's time.
constexpr int maxOpenElements = 1000;
constexpr int maxOpenTables = 10;
// Columns that cells of more than one column cover, in the whole text.
constexpr int maxSpannedColumns = 10000;
// Items of all lists: each one costs as many steps as there are in its list.
constexpr int maxListItems = 4000;
// Style rules times elements: each rule is tried on each element.
constexpr int maxStyleSteps = 5000000;
// The largest style sheet that is read from a file in bytes, and the rules that it may have.
constexpr int maxStyleSheetBytes = 16 * 1024;
constexpr int rulesOfStyleSheet = 800;

// Whether @p html keeps to the limits above, so that it is laid out in seconds, not minutes.
[[nodiscard]] bool isWithinLimits(const QString &html);

// @p text as it can be shown plain: cut at the length limit, too long words broken by line feeds.
[[nodiscard]] QString shownPlain(const QString &text);
