// SPDX-License-Identifier: MIT

#include "log-entries.h"

#include "gallery-page.h"

#include <kovakit-qt/widgets/kova-table-columns-info.h>
#include <kovakit-qt/widgets/kova-table-widget.h>

#include <QDateTime>
#include <QHeaderView>
#include <QRandomGenerator>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>
#include <array>

namespace {

constexpr int numberRole = Qt::UserRole;

int numberAt(const QTableWidget *table, int row)
{
    return table->item(row, 0)->data(numberRole).toInt();
}

struct Template
{
    const char *level;
    const char *event;
};

const std::array<Template, 8> templates = {{
    {QT_TR_NOOP("Info"), QT_TR_NOOP("Backed up %1 files from Documents")},
    {QT_TR_NOOP("Info"), QT_TR_NOOP("Backed up %1 files from Pictures")},
    {QT_TR_NOOP("Info"), QT_TR_NOOP("Removed %1 old versions")},
    {QT_TR_NOOP("Info"), QT_TR_NOOP("Checked %1 files, all in order")},
    {QT_TR_NOOP("Info"), QT_TR_NOOP("Connected after %1 ms")},
    {QT_TR_NOOP("Warning"), QT_TR_NOOP("%1 files were open and will be tried again")},
    {QT_TR_NOOP("Warning"), QT_TR_NOOP("The drive has %1 MB left")},
    {QT_TR_NOOP("Error"), QT_TR_NOOP("The server did not answer within %1 s")},
}};

} // namespace

std::vector<LogEntry> makeLog(int count)
{
    static const QStringList users = {QStringLiteral("anna"), QStringLiteral("ben"),
                                      QStringLiteral("chioma"), QStringLiteral("system")};
    std::array<QString, templates.size()> levels;
    std::array<QString, templates.size()> events;
    for (std::size_t kind = 0; kind < templates.size(); ++kind) {
        levels[kind] = GalleryPage::tr(templates[kind].level);
        events[kind] = GalleryPage::tr(templates[kind].event);
    }
    QRandomGenerator random(1);
    QDateTime time(QDate(2024, 3, 14), QTime(18, 30), Qt::UTC);
    std::vector<LogEntry> log;
    log.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        const auto kind = std::size_t(random.bounded(int(templates.size())));
        log.push_back(
            {{time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), levels[kind],
              users[random.bounded(users.size())], events[kind].arg(random.bounded(2, 1000))},
             i});
        time = time.addSecs(-random.bounded(5, 240));
    }
    return log;
}

void sortLog(std::vector<LogEntry> &log, int column, Qt::SortOrder order)
{
    const auto at = std::size_t(column);
    std::stable_sort(
        log.begin(), log.end(), [at, order](const LogEntry &left, const LogEntry &right) {
            return order == Qt::AscendingOrder ? left.texts.at(at) < right.texts.at(at)
                                               : right.texts.at(at) < left.texts.at(at);
        });
}

KovaTableColumnsInfo logColumns()
{
    KovaTableColumnsInfo columns;
    columns.addColumn(GalleryPage::tr("Time"), 176, false, 0);
    columns.addColumn(GalleryPage::tr("Level"), 84, true, 0);
    columns.addColumn(GalleryPage::tr("User"), 90, true, 0.25);
    columns.addColumn(GalleryPage::tr("Event"), 160, true, 0.75);
    return columns;
}

QString titleOf(const KovaTableWidget *view, int column)
{
    return view->getHeader()->model()->headerData(column, Qt::Horizontal).toString();
}

void showEntries(QTableWidget *table, const std::vector<LogEntry> &log, int first, int count)
{
    first = qBound(0, first, int(log.size()));
    const int shown = qBound(0, int(log.size()) - first, count);
    const QSignalBlocker quiet(table);
    table->setRowCount(shown);
    for (int row = 0; row < shown; ++row) {
        const LogEntry &entry = log[std::size_t(first) + std::size_t(row)];
        for (int column = 0; column < int(entry.texts.size()); ++column) {
            const QString &text = entry.texts.at(std::size_t(column));
            if (QTableWidgetItem *item = table->item(row, column))
                item->setText(text);
            else
                table->setItem(row, column, new QTableWidgetItem(text));
        }
        table->item(row, 0)->setData(numberRole, entry.number);
    }
}

LogSelection selectionOf(const QTableWidget *table)
{
    const QItemSelectionModel *model = table->selectionModel();
    LogSelection selection;
    for (int row = 0; row < table->rowCount(); ++row) {
        if (model->isRowSelected(row, QModelIndex()))
            selection.selected.insert(numberAt(table, row));
    }
    if (table->currentRow() >= 0)
        selection.current = numberAt(table, table->currentRow());
    return selection;
}

void restoreSelection(QTableWidget *table, const LogSelection &selection)
{
    const QSignalBlocker quiet(table);
    const int column = qMax(0, table->currentColumn());
    int current = 0;
    QItemSelection rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        const int number = numberAt(table, row);
        if (number == selection.current)
            current = row;
        if (selection.selected.contains(number)) {
            const QAbstractItemModel *model = table->model();
            rows.append(QItemSelectionRange(model->index(row, 0),
                                            model->index(row, table->columnCount() - 1)));
        }
    }
    table->selectionModel()->setCurrentIndex(table->model()->index(current, column),
                                             QItemSelectionModel::NoUpdate);
    table->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    table->scrollTo(table->currentIndex());
}
