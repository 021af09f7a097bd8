// SPDX-License-Identifier: MIT

#include "support/test-host.h"
#include "support/user-input.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-table-widget.h>

#include <QtTest>
#include <QtWidgets>

class TableAccessibleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void titlesAreThoseOfTheHeader();
    void cellsGoWithTheirRows();
};

namespace {

KovaTableColumnsInfo someColumns()
{
    KovaTableColumnsInfo columns;
    columns.addColumn("Time", 100, false, 0);
    columns.addColumn("Level", 100, true, 0);
    columns.addColumn("Event", 100, true, 1);
    return columns;
}

} // namespace

void TableAccessibleTest::titlesAreThoseOfTheHeader()
{
    KovaTableWidget view(someColumns(), nullptr);
    view.setAccessibleName("Log");
    QHeaderView *header = view.getHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    const QSignalSpy clicks(header, &QHeaderView::sectionClicked);
    view.getTable()->setRowCount(2);
    view.getTable()->setItem(1, 1, new QTableWidgetItem("Error"));
    view.resize(600, 200);
    showActive(&view);

    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(view.getTable());
    QCOMPARE(table->text(QAccessible::Name), "Log");
    QAccessibleInterface *cell = table->tableInterface()->cellAt(1, 1);
    QCOMPARE(cell->text(QAccessible::Name), "Error");
    QAccessibleInterface *title = cell->tableCellInterface()->columnHeaderCells().value(0);
    QCOMPARE(title->role(), QAccessible::ColumnHeader);
    QCOMPARE(title->text(QAccessible::Name), "Level");
    QVERIFY(!title->state().invisible);
    // It is the one that is seen, over its column.
    QCOMPARE(title->rect().left(), cell->rect().left());
    QCOMPARE(title->rect().bottom() + 1, view.getTable()->mapToGlobal(QPoint()).y());
    QCOMPARE(table->child(table->indexOfChild(title)), title);

    title->actionInterface()->doAction("Press");
    title->actionInterface()->doAction("Press");
    QTRY_COMPARE(clicks.count(), 2);
    QCOMPARE(title->text(QAccessible::Description), "Sorted descending");
    title->actionInterface()->doAction("Increase");
    QCOMPARE(view.getTable()->columnWidth(1), kovaPx(100) + kovaPx(8));
    title->actionInterface()->doAction("SetFocus");
    QVERIFY(header->hasFocus());
    QCOMPARE(table->focusChild(), title);
    QAccessibleInterface *fixed = table->tableInterface()->cellAt(0, 0);
    fixed = fixed->tableCellInterface()->columnHeaderCells().value(0);
    QVERIFY(!fixed->valueInterface());
    view.getTable()->setColumnHidden(0, true);
    QVERIFY(fixed->state().invisible);
    // What is disabled does nothing.
    view.setEnabled(false);
    QVERIFY(title->actionInterface()->actionNames().isEmpty());
    title->actionInterface()->doAction("Press");
    QCoreApplication::processEvents();
    QCOMPARE(clicks.count(), 2);
    QVERIFY(!table->tableInterface()->selectRow(1));
}

void TableAccessibleTest::cellsGoWithTheirRows()
{
    constexpr int rowCount = 100000;
    KovaTableWidget view(someColumns(), nullptr);
    QTableWidget *table = view.getTable();
    table->setRowCount(rowCount);
    table->setItem(rowCount - 1, 2, new QTableWidgetItem("Oldest"));
    QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(table);
    QAccessibleInterface *first = spoken->tableInterface()->cellAt(0, 0);
    QAccessibleInterface *last = spoken->child(spoken->childCount() - 1);
    const QAccessible::Id idOfFirst = QAccessible::uniqueId(first);
    QCOMPARE(last->text(QAccessible::Name), "Oldest");

    table->removeRow(0);
    // Qt tells so where assistive technology runs.
    QAccessibleTableModelChangeEvent event(table, QAccessibleTableModelChangeEvent::RowsRemoved);
    spoken->tableInterface()->modelChange(&event);
    QCOMPARE(last->tableCellInterface()->rowIndex(), rowCount - 2);
    QCOMPARE(spoken->child(spoken->childCount() - 1), last);
    QVERIFY(!QAccessible::accessibleInterface(idOfFirst));
    QVERIFY(!spoken->child(spoken->childCount()));
}

QTEST_MAIN(TableAccessibleTest)
#include "table-accessible-test.moc"
