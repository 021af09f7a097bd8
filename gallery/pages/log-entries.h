// SPDX-License-Identifier: MIT

#pragma once

#include <QSet>
#include <QString>
#include <Qt>

#include <array>
#include <vector>

class QTableWidget;
class KovaTableColumnsInfo;
class KovaTableWidget;

// The log of a made-up backup program, the same at every start.

// One line of the log: a text for each column, and a number that it keeps wherever it is sorted to.
struct LogEntry
{
    std::array<QString, 4> texts;
    int number;
};

enum LogColumn { LogTime, LogLevel, LogUser, LogEvent };

// @p count entries, the newest first.
[[nodiscard]] std::vector<LogEntry> makeLog(int count);

// Sorts @p log by the texts of one column; entries that are equal there keep their order.
void sortLog(std::vector<LogEntry> &log, int column, Qt::SortOrder order);

// The columns of a table of entries.
[[nodiscard]] KovaTableColumnsInfo logColumns();

// The title that a column has in a table of entries.
[[nodiscard]] QString titleOf(const KovaTableWidget *view, int column);

// Shows @p count entries of @p log from @p first on, and makes or reuses the items for them. A page
// that does not exist is empty.
void showEntries(QTableWidget *table, const std::vector<LogEntry> &log, int first, int count);

// Which entries, by their numbers, are selected and current in a table.
struct LogSelection
{
    QSet<int> selected;
    int current = -1;
};

[[nodiscard]] LogSelection selectionOf(const QTableWidget *table);

// Selects in @p table what is shown there of @p selection and nothing else, and brings the current
// entry into sight, or the first row if it is not there.
void restoreSelection(QTableWidget *table, const LogSelection &selection);
