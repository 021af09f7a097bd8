// SPDX-License-Identifier: MIT

#include "bench.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-paging-bar.h>
#include <kovakit-qt/widgets/kova-paging-model.h>
#include <kovakit-qt/widgets/kova-table-widget.h>
#include <kovakit-qt/widgets/kova-tree-widget.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QScrollBar>

#include <memory>

namespace {

constexpr int rowCount = 100000;
constexpr int columnCount = 4;
constexpr int fixedWidth = 140;
constexpr int leastWidth = 80;

KovaTableColumnsInfo columns()
{
    KovaTableColumnsInfo info;
    info.addColumn(QStringLiteral("Time"), fixedWidth, false, 0);
    for (int i = 1; i < columnCount; ++i)
        info.addColumn(QStringLiteral("Column %1").arg(i), leastWidth, true, 1.0 / 3);
    return info;
}

void fill(QTableWidget *table)
{
    table->setRowCount(rowCount);
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < columnCount; ++column)
            table->setItem(row, column, new QTableWidgetItem(QString::number(row + column)));
    }
}

// A table, and the window in which it is.
struct Shown
{
    std::unique_ptr<QWidget> window;
    QTableWidget *table;
};

using Make = Shown (*)();

Shown kovaTable()
{
    auto view = std::make_unique<KovaTableWidget>(columns(), nullptr);
    QTableWidget *table = view->getTable();
    return {std::move(view), table};
}

// What a host would do without the library: the same looks, and columns that stretch.
Shown plainTable()
{
    auto table = std::make_unique<QTableWidget>(0, columnCount);
    table->setStyleSheet(getStyleSheet("component.table", false)
                         + getStyleSheet("component.scrollbar", false));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(kovaPx(28));
    QHeaderView *header = table->horizontalHeader();
    header->setStyleSheet(getStyleSheet("component.table_header", false));
    header->setFixedHeight(kovaPx(30));
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(0, QHeaderView::Fixed);
    header->resizeSection(0, kovaPx(fixedWidth));
    QTableWidget *rows = table.get();
    return {std::move(table), rows};
}

Shown shownTable(Make make)
{
    Shown shown = make();
    shown.window->resize(900, 600);
    showAndWaitForPaint(shown.window.get());
    return shown;
}

Bench::Side fillTime(Make make)
{
    return [make] {
        const Shown shown = shownTable(make);
        const Stopwatch watch;
        fill(shown.table);
        QCoreApplication::processEvents();
        return watch.milliseconds();
    };
}

Bench::Side filledBytes(Make make)
{
    return [make] {
        const double before = heapBytes();
        const Shown shown = shownTable(make);
        fill(shown.table);
        QCoreApplication::processEvents();
        return heapBytes() - before;
    };
}

// A side that works on one filled table, made at its first call.
Bench::Side onFilledTable(Make make, void (*work)(const Shown &))
{
    const auto shown = std::make_shared<Shown>();
    return [make, work, shown] {
        if (!shown->window) {
            *shown = shownTable(make);
            fill(shown->table);
            QCoreApplication::processEvents();
        }
        const Stopwatch watch;
        work(*shown);
        return watch.milliseconds();
    };
}

void scrollThrough(const Shown &shown)
{
    constexpr int steps = 200;
    QScrollBar *bar = shown.table->verticalScrollBar();
    for (int step = 0; step <= steps; ++step) {
        bar->setValue(int(qint64(bar->maximum()) * step / steps));
        QCoreApplication::processEvents();
    }
}

void resizeBackAndForth(const Shown &shown)
{
    for (int step = 0; step < 60; ++step) {
        shown.window->resize(600 + (step * 37) % 400, 600);
        QCoreApplication::processEvents();
    }
}

// One window at a time: painting one that is covered by another costs less.
template<class Tree>
double repaintTime()
{
    constexpr int rows = 40;
    constexpr int repaints = 50;
    ItemDelegate delegate;
    Tree tree(nullptr);
    tree.setItemDelegate(&delegate);
    tree.setHeaderHidden(true);
    tree.setStyleSheet(getStyleSheet("theme.tree", false));
    for (int row = 0; row < 2 * rows; ++row) {
        auto *item = new QTreeWidgetItem(&tree, {QStringLiteral("Folder number %1").arg(row)});
        item->setCheckState(0, row % 2 == 0 ? Qt::Checked : Qt::Unchecked);
    }
    tree.setGeometry(20, 40, 400, rows * kovaPx(28));
    showAndWaitForPaint(&tree);
    const Stopwatch watch;
    for (int i = 0; i < repaints; ++i)
        tree.viewport()->repaint();
    return watch.milliseconds() / repaints;
}

double turnPages()
{
    KovaPagingModel model(50, nullptr);
    KovaPagingBar bar(&model, nullptr);
    bar.resize(700, 29);
    showAndWaitForPaint(&bar);
    bar.setItemCount(500000);
    const Stopwatch watch;
    for (int page = 1; page <= 10000; ++page)
        bar.setPage(page);
    QCoreApplication::processEvents();
    return watch.milliseconds();
}

void dataViews(Bench &bench)
{
    bench.compare({"table/fill-100000", "ms", 1.05}, fillTime(kovaTable), fillTime(plainTable));
    bench.compare({"table/memory-100000", "bytes", 1.05}, filledBytes(kovaTable),
                  filledBytes(plainTable));
    bench.compare({"table/scroll-100000", "ms", 1.05}, onFilledTable(kovaTable, scrollThrough),
                  onFilledTable(plainTable, scrollThrough));
    bench.compare({"table/resize-100000", "ms", 1.05}, onFilledTable(kovaTable, resizeBackAndForth),
                  onFilledTable(plainTable, resizeBackAndForth));
    // Elsewhere it costs nothing to ask for the pointer.
    bench.compare({"tree/repaint-40-rows", "ms", Bench::onX11() ? 1.15 : 0},
                  repaintTime<KovaTreeWidget>, repaintTime<QTreeWidget>);
    bench.measure({"paging/set-page-10000", "ms", 0}, turnPages);
}

const BenchTopic topic(dataViews);

} // namespace
