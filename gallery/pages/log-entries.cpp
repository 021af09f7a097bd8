#include "log-entries.h"

#include <kovakit-qt/widgets/kova-table-columns-info.h>

#include <QDateTime>
#include <QRandomGenerator>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>

namespace {

constexpr int numberRole = Qt::UserRole;

int numberAt(const QTableWidget *table, int row)
{
    return table->item(row, 0)->data(numberRole).toInt();
}

struct Template
{
    QString level;
    QString event;
};

const std::vector<Template> &templates()
{
    static const QString info = QStringLiteral("Info");
    static const std::vector<Template> all = {
        {info, QStringLiteral("Backed up %1 files from Documents")},
        {info, QStringLiteral("Backed up %1 files from Pictures")},
        {info, QStringLiteral("Removed %1 old versions")},
        {info, QStringLiteral("Checked %1 files, all in order")},
        {info, QStringLiteral("Connected after %1 ms")},
        {QStringLiteral("Warning"), QStringLiteral("%1 files were open and will be tried again")},
        {QStringLiteral("Warning"), QStringLiteral("The drive has %1 MB left")},
        {QStringLiteral("Error"), QStringLiteral("The server did not answer within %1 s")},
    };
    return all;
}

} // namespace

std::vector<LogEntry> makeLog(int count)
{
    static const QStringList users = {QStringLiteral("anna"), QStringLiteral("ben"),
                                      QStringLiteral("chioma"), QStringLiteral("system")};
    QRandomGenerator random(1);
    QDateTime time(QDate(2024, 3, 14), QTime(18, 30), Qt::UTC);
    std::vector<LogEntry> log;
    log.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        const Template &entry = templates()[random.bounded(quint32(templates().size()))];
        log.push_back(
            {{time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), entry.level,
              users[random.bounded(users.size())], entry.event.arg(random.bounded(2, 1000))},
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
    columns.addColumn(QStringLiteral("Time"), 176, false, 0);
    columns.addColumn(QStringLiteral("Level"), 84, true, 0);
    columns.addColumn(QStringLiteral("User"), 90, true, 0.25);
    columns.addColumn(QStringLiteral("Event"), 160, true, 0.75);
    return columns;
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
