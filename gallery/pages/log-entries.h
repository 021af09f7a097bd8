#pragma once

#include <QString>
#include <Qt>

#include <array>
#include <vector>

class QTableWidget;
class KovaTableColumnsInfo;

// The log of a made-up backup program, the same at every start.

// One line of the log, a text for each column.
using LogEntry = std::array<QString, 4>;

enum LogColumn { LogTime, LogLevel, LogUser, LogEvent };

// @p count entries, the newest first.
[[nodiscard]] std::vector<LogEntry> makeLog(int count);

// Sorts @p log by the texts of one column; entries that are equal there keep their order.
void sortLog(std::vector<LogEntry> &log, int column, Qt::SortOrder order);

// The columns of a table of entries.
[[nodiscard]] KovaTableColumnsInfo logColumns();

// Shows @p count entries of @p log from @p first on, and makes or reuses the items for them.
void showEntries(QTableWidget *table, const std::vector<LogEntry> &log, int first, int count);
