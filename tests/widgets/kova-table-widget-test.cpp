// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

// One fixed column and two that share what is left, as in most tables.
KovaTableColumnsInfo threeColumns(double ratio = 0.5)
{
    KovaTableColumnsInfo columns;
    columns.addColumn("Time", 200, false, 0);
    columns.addColumn("User", 100, true, ratio);
    columns.addColumn("Event", 100, true, ratio);
    return columns;
}

// A shown table with rows in colours, column for column, that can be seen in pictures.
std::unique_ptr<KovaTableWidget> colourfulTable(const KovaTableColumnsInfo &columns, int rowCount)
{
    auto view = std::make_unique<KovaTableWidget>(columns, nullptr);
    ResizeSignalTableWidget *table = view->getTable();
    table->setRowCount(rowCount);
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            auto *item = new QTableWidgetItem;
            item->setBackground(column % 2 ? Qt::blue : Qt::green);
            table->setItem(row, column, item);
        }
    }
    view->resize(kovaPx(812), kovaPx(200));
    showActive(view.get());
    return view;
}

// Whether columns end at the same places, @p leastCount or more of them, in the picture of a
// widget, read from its start to its end: in the header by the red line there, in the rows by the
// change of colour.
bool isAligned(KovaTableWidget *view, int leastCount)
{
    const QWidget *viewport = view->getTable()->viewport();
    const QPoint origin = viewport->mapTo(view, QPoint());
    const QRect area(origin.x(), 0, viewport->width(), view->height());
    const QImage picture = view->grab(area).toImage().mirrored(view->isRightToLeft(), false);
    // The second row is looked at: the current cell, with its frame, is in the first.
    const int headerY = kovaPx(15);
    const int rowY = origin.y() + kovaPx(42);
    const QRgb red = QColor(Qt::red).rgb();
    QList<int> header;
    QList<int> rows;
    for (int x = 1; x < picture.width(); ++x) {
        if (picture.pixel(x - 1, headerY) == red && picture.pixel(x, headerY) != red)
            header.append(x);
        if (picture.pixel(x - 1, rowY) != picture.pixel(x, rowY))
            rows.append(x);
    }
    // The header's extra column comes into sight when the others leave room.
    if (header.size() == rows.size() + 1)
        header.removeLast();
    if (header != rows)
        qDebug() << "header" << header << "rows" << rows;
    return header == rows && rows.size() >= leastCount;
}

} // namespace

// The table: header and rows stay one above the other whatever happens to widths and directions,
// spare width is shared, and keyboard, screen reader and tooltips get at the cells.
class KovaTableWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void buildsHeaderAndRows();
    void sharesTheSpareWidth();
    void alignedWhenDragged();
    void alignedWhenScrolledSideways();
    void hidesColumnsInBoth();
    void scrollBarHidesWhenAllRowsFit();
    void keyboardWalksTheRows();
    void keyboardUsesTheHeader_data();
    void keyboardUsesTheHeader();
    void cutCellsHaveTooltips();
};

void KovaTableWidgetTest::initTestCase()
{
    setUpHost();
    StyleManager::getInstance()->initialize({writeScratchFile(
        "table.qss", "== component.table ==\n"
                     "QTableWidget { border: none; background-color: #FFFFFF; }\n"
                     "== component.table_header ==\n"
                     "QHeaderView { border: none; background-color: #FFFFFF; }\n"
                     "QHeaderView::section { border: none; border-right: 1px solid #FF0000;"
                     " background-color: #FFFFFF; }\n")});
}

void KovaTableWidgetTest::buildsHeaderAndRows()
{
    WarningCatcher warnings;
    KovaTableColumnsInfo columns = threeColumns();
    QCOMPARE(columns.addColumn("!", 6, false, 0), 3);
    KovaTableWidget view(columns, nullptr);
    view.initailze(); // once more does nothing
    QCOMPARE(view.findChildren<ResizeSignalTableWidget *>().size(), 1);
    QCOMPARE(warnings.take(), QStringList());

    const QHeaderView *header = view.getHeader();
    QStringList titles;
    for (int i = 0; i < header->count(); ++i)
        titles.append(header->model()->headerData(i, Qt::Horizontal).toString());
    QCOMPARE(titles.join("|"), "Time|User|Event|!|");
    // Narrower than headers let sections be by themselves.
    QCOMPARE(header->sectionSize(3), kovaPx(6));
    QCOMPARE(view.getTable()->columnWidth(3), kovaPx(6));
    QCOMPARE(header->sectionSize(4), kovaPx(12));
    view.getTable()->setRowCount(1);
    QCOMPARE(view.getTable()->rowHeight(0), kovaPx(28));
    // Cells are read out with the names of their columns.
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(view.getTable());
    QCOMPARE(table->tableInterface()->columnDescription(2), "Event");

    KovaTableWidget empty(KovaTableColumnsInfo(), nullptr);
    showActive(&empty);
    QCOMPARE(empty.getHeader()->sectionSize(0), kovaPx(12));
    delete empty.getTable();
    empty.resize(100, 100);
}

void KovaTableWidgetTest::sharesTheSpareWidth()
{
    const int fixed = kovaPx(200);
    const auto share = [fixed](double ratio, int spare) {
        KovaTableWidget view(threeColumns(ratio), nullptr);
        view.slotTableResized({fixed + spare, 100});
        const ResizeSignalTableWidget *table = view.getTable();
        const bool equal = table->columnWidth(1) == table->columnWidth(2);
        return equal && table->columnWidth(0) == fixed ? table->columnWidth(1) : -1;
    };
    QCOMPARE(share(0.5, kovaPx(600)), kovaPx(600) / 2);
    // Shares are truncated and never made to add up.
    QCOMPARE(share(1.0 / 3, 1000), 333);
    QCOMPARE(share(0.8, 1000), 800);
    QCOMPARE(share(0.5, kovaPx(100)), kovaPx(100));

    // A column without a share keeps the width that the user gave to it.
    KovaTableColumnsInfo columns = threeColumns(0);
    columns.addColumn("Rest", 50, true, 1);
    KovaTableWidget view(columns, nullptr);
    view.getHeader()->resizeSection(1, kovaPx(160));
    view.slotTableResized({kovaPx(800), 100});
    QCOMPARE(view.getTable()->columnWidth(1), kovaPx(160));
    QCOMPARE(view.getTable()->columnWidth(3), kovaPx(400));
}

void KovaTableWidgetTest::alignedWhenDragged()
{
    const auto view = colourfulTable(threeColumns(), 3);
    QWindow *window = view->windowHandle();
    const auto drag = [&](const QPoint &edge, int way) {
        QTest::mousePress(window, Qt::LeftButton, {}, edge);
        for (const int part : {way / 2, way}) {
            QTest::mouseMove(window, edge + QPoint(part, 0));
            QCoreApplication::processEvents(); // the rows scroll if they have to
        }
        QTest::mouseRelease(window, Qt::LeftButton, {}, edge + QPoint(way, 0));
    };
    QHeaderView *header = view->getHeader();
    const QTableWidget *table = view->getTable();
    for (const int way : {-7, -90, 33}) {
        const int before = header->sectionSize(1);
        drag({kovaPx(200) + before - 2, kovaPx(15)}, way);
        QCOMPARE(header->sectionSize(1), before + way);
        QVERIFY2(isAligned(view.get(), 3), qPrintable(QString::number(way)));
    }
    // Beyond the room that there is: the bar that comes up takes height, and no widths.
    view->resize(view->width() + 1, view->height()); // shares anew
    const int share = header->sectionSize(1);
    drag({kovaPx(200) + share - 2, kovaPx(15)}, 60);
    QTRY_VERIFY(table->horizontalScrollBar()->isVisible());
    QCOMPARE(table->columnWidth(1), share + 60);
    QCOMPARE(table->columnWidth(2), share);
    // At the end of the rows, which slide along as the last column gets narrower.
    table->horizontalScrollBar()->setValue(60);
    drag({kovaPx(200) + 2 * share - 2, kovaPx(15)}, -40);
    QCOMPARE(table->columnWidth(2), share - 40);
    QVERIFY(isAligned(view.get(), 2));
    table->horizontalScrollBar()->setValue(0);
    drag({kovaPx(200) + share + 58, kovaPx(15)}, -60);
    QTRY_VERIFY(!table->horizontalScrollBar()->isVisible());
    QCOMPARE(table->columnWidth(1), share);
    // Only the edge that can be dragged says so.
    for (const bool resizable : {true, false}) {
        QTest::mouseMove(window, {kovaPx(200) + (resizable ? share : 0) - 2, kovaPx(15)});
        QTRY_COMPARE(header->cursor().shape() == Qt::SplitHCursor, resizable);
    }
    // The edges of a fixed column and of the extra one cannot be dragged.
    drag({kovaPx(200) - 2, kovaPx(15)}, 30);
    QCOMPARE(table->columnWidth(0), kovaPx(200));
    drag({header->length() - 2, kovaPx(15)}, -5);
    QCOMPARE(header->sectionSize(3), kovaPx(12));
}

void KovaTableWidgetTest::alignedWhenScrolledSideways()
{
    KovaTableColumnsInfo columns;
    for (int i = 0; i < 12; ++i)
        columns.addColumn(QString::number(i), 61 + i, i % 2 == 0, 0);
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        const auto view = colourfulTable(columns, 60);
        if (direction == Qt::RightToLeft) {
            // The line of a section is at its end.
            view->setLayoutDirection(direction);
            view->getHeader()->setStyleSheet(
                view->getHeader()->styleSheet().replace("-right", "-left"));
        }
        view->resize(kovaPx(400), kovaPx(200));
        QScrollBar *bar = view->getTable()->horizontalScrollBar();
        QTRY_VERIFY(bar->maximum() > 0);
        for (const int value : {0, 1, 37, bar->maximum() / 2, bar->maximum() - 1, bar->maximum()}) {
            bar->setValue(value);
            QVERIFY2(isAligned(view.get(), 4), qPrintable(QString::number(value)));
        }
        // A wider window scrolls back.
        view->resize(kovaPx(700), kovaPx(200));
        QVERIFY(isAligned(view.get(), 8));
        view->getTable()->setColumnWidth(0, kovaPx(150)); // by the host
        QCOMPARE(view->getHeader()->sectionSize(0), kovaPx(150));
        QVERIFY(isAligned(view.get(), 7));
    }
}

void KovaTableWidgetTest::hidesColumnsInBoth()
{
    KovaTableColumnsInfo columns = threeColumns(0.3);
    columns.addColumn("Size", 80, false, 0);
    const auto view = colourfulTable(columns, 3);
    QHeaderView *rows = view->getTable()->horizontalHeader();
    const int width = view->width();
    const int before = rows->sectionSize(1);
    QHeaderView *header = view->getHeader();
    const std::tuple<const char *, QHeaderView *, QHeaderView *> ways[] = {
        {"header, header", header, header},
        {"header, rows", header, rows},
        {"rows, header", rows, header},
        {"rows, rows", rows, rows}};
    for (const auto &[way, hiding, showing] : ways) {
        hiding->hideSection(1);
        hiding->hideSection(0);
        QVERIFY2(rows->isSectionHidden(0) && rows->isSectionHidden(1), way);
        QVERIFY2(isAligned(view.get(), 2), way);
        // No gap is left: the column that stays has the other's share too.
        QCOMPARE(rows->sectionSize(2),
                 int(0.6 * (view->getTable()->viewport()->width() - kovaPx(80))));

        // A width that was shared meanwhile is the one to come back.
        view->resize(width - 100, view->height());
        showing->showSection(0);
        showing->showSection(1);
        QVERIFY2(qAbs(rows->sectionSize(1) - (before - 30)) <= 1, way);
        QVERIFY2(isAligned(view.get(), 4), way);
        view->resize(width, view->height());
    }
}

void KovaTableWidgetTest::scrollBarHidesWhenAllRowsFit()
{
    const auto view = colourfulTable(threeColumns(), 3);
    QTableWidget *table = view->getTable();
    for (const int rowCount : {3, 100, 2}) {
        table->setRowCount(rowCount);
        QTRY_COMPARE(table->verticalScrollBar()->isVisible(), rowCount == 100);
        // The header's extra column is just as wide as the place that is kept for the bar.
        QCOMPARE(view->width() - table->viewport()->width(), view->getHeader()->sectionSize(3));
    }
}

void KovaTableWidgetTest::keyboardWalksTheRows()
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *field = new QLineEdit;
    auto *view = colourfulTable(threeColumns(), 60).release();
    layout->addWidget(field);
    layout->addWidget(view);
    showActive(&window);
    QTableWidget *table = view->getTable();
    field->setFocus();
    press(&window, {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Down});
    QCOMPARE(table->selectionModel()->selectedRows(), {table->model()->index(2, 0)});
    // A hidden column is no place for the keyboard to be.
    view->getHeader()->hideSection(1);
    press(&window, Qt::Key_Right);
    QCOMPARE(table->currentColumn(), 2);
    press(&window, Qt::Key_Tab);
    QVERIFY(field->hasFocus());
}

void KovaTableWidgetTest::keyboardUsesTheHeader()
{
    QFETCH(Qt::LayoutDirection, direction);
    KovaTableColumnsInfo columns = threeColumns(0);
    columns.addColumn("Notes", 900, true, 0);
    KovaTableWidget view(columns, nullptr);
    QHeaderView *header = view.getHeader();
    header->setSectionsClickable(true);
    header->setSortIndicator(1, Qt::DescendingOrder);
    const QSignalSpy clicks(header, &QHeaderView::sectionClicked);
    view.setLayoutDirection(direction);
    view.resize(kovaPx(500), kovaPx(200));
    showActive(&view);
    const bool isMirrored = direction == Qt::RightToLeft;
    const int forward = isMirrored ? Qt::Key_Left : Qt::Key_Right;
    const int back = isMirrored ? Qt::Key_Right : Qt::Key_Left;

    view.getTable()->setFocus();
    const QImage without = view.grab().toImage();
    header->setFocus(Qt::TabFocusReason);
    const QImage first = view.grab().toImage();
    QVERIFY(first != without);
    press(&view, forward);
    QVERIFY(view.grab().toImage() != first);
    press(&view, Qt::Key_Home);
    QCOMPARE(view.grab().toImage(), first);
    header->hideSection(2);
    press(&view, {forward, Qt::Key_Space, Qt::Key_Return});
    QCOMPARE(clicks.count(), 2);
    QCOMPARE(clicks.last().value(0), 1);
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    // The edge goes where the arrow points.
    press(&view, forward, Qt::AltModifier);
    press(&view, forward, Qt::AltModifier);
    press(&view, back, Qt::ShiftModifier);
    QCOMPARE(view.getTable()->columnWidth(1), kovaPx(100) + kovaPx(8));
    // The hidden column is left out, what is out of sight comes into sight.
    press(&view, forward);
    const QWidget *viewport = view.getTable()->viewport();
    const QRect rows(viewport->mapTo(&view, QPoint()), viewport->size());
    const int begin = header->mapTo(&view, {header->sectionViewportPosition(3), 0}).x();
    QCOMPARE(isMirrored ? begin + header->sectionSize(3) - 1 : begin,
             isMirrored ? rows.right() : rows.left());
    press(&view, Qt::Key_Space);
    QCOMPARE(clicks.last().value(0), 3);
    // Columns of a fixed width and titles beyond the ends stay.
    press(&view, {forward, Qt::Key_Home, back});
    press(&view, forward, Qt::AltModifier);
    QCOMPARE(view.getTable()->columnWidth(0), kovaPx(200));
    press(&view, Qt::Key_Space);
    QCOMPARE(clicks.last().value(0), 0);
}

void KovaTableWidgetTest::keyboardUsesTheHeader_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("from left to right") << Qt::LeftToRight;
    QTest::newRow("from right to left") << Qt::RightToLeft;
}

void KovaTableWidgetTest::cutCellsHaveTooltips()
{
    const auto view = colourfulTable(threeColumns(), 1);
    QTableWidget *table = view->getTable();
    const auto shown = [&](const QString &text, const QString &own) {
        table->item(0, 1)->setText(text);
        table->item(0, 1)->setToolTip(own);
        QToolTip::hideText();
        const QPoint place = table->visualItemRect(table->item(0, 1)).center();
        QHelpEvent event(QEvent::ToolTip, place, table->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(table->viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    const QString cut = QString("<i>report</i> ").repeated(20);
    QCOMPARE(shown(cut, QString()), getHtmlEscapedStringForToolTip(cut));
    QCOMPARE(shown(cut, "of the host"), "of the host");
    // One that shows would fade out late.
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    QCOMPARE(shown("short", QString()), QString());
}

QTEST_MAIN(KovaTableWidgetTest)
#include "kova-table-widget-test.moc"
