#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

// One fixed column and two that share what is left, as in most tables.
KovaTableColumnsInfo threeColumns(double ratio = 0.5)
{
    KovaTableColumnsInfo columns;
    columns.addColumn(QStringLiteral("Time"), 200, false, 0);
    columns.addColumn(QStringLiteral("User"), 100, true, ratio);
    columns.addColumn(QStringLiteral("Event"), 100, true, ratio);
    return columns;
}

// A table with rows in colours, column for column, that can be seen in pictures.
std::unique_ptr<KovaTableWidget> colourfulTable(const KovaTableColumnsInfo &columns, int rowCount)
{
    auto view = std::make_unique<KovaTableWidget>(columns, nullptr);
    ResizeSignalTableWidget *table = view->getTable();
    table->setRowCount(rowCount);
    const QColor colors[] = {Qt::green, Qt::blue};
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            // The second row is looked at: the current cell, with its frame, is in the first.
            const QString text = QStringLiteral("%1, %2").arg(row).arg(column);
            auto *item = new QTableWidgetItem(row == 1 ? QString() : text);
            item->setBackground(colors[column % 2]);
            table->setItem(row, column, item);
        }
    }
    return view;
}

void showTable(KovaTableWidget *view, int designWidth = 812, int designHeight = 200)
{
    view->resize(kovaPx(designWidth), kovaPx(designHeight));
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view));
}

// Where columns end in the picture of a widget, read from its start to its end: in the header by
// the red line there, in the rows by the change of colour.
struct Edges
{
    explicit Edges(KovaTableWidget *view)
    {
        const QImage picture = view->grab().toImage();
        const QWidget *viewport = view->getTable()->viewport();
        const QPoint origin = viewport->mapTo(view, QPoint());
        const bool reverse = view->isRightToLeft();
        const auto colorAt = [&](int x, int y) {
            return picture.pixelColor(origin.x() + (reverse ? viewport->width() - 1 - x : x), y);
        };
        for (int x = 0; x + 1 < viewport->width(); ++x) {
            const int headerY = kovaPx(15);
            const int rowY = origin.y() + kovaPx(42);
            if (colorAt(x, headerY) == QColor(Qt::red) && colorAt(x + 1, headerY) != Qt::red)
                header.append(QString::number(x));
            if (colorAt(x, rowY) != colorAt(x + 1, rowY))
                rows.append(QString::number(x));
        }
        // The header's extra column comes into sight when the others leave room.
        if (header.size() == rows.size() + 1)
            header.removeLast();
    }

    QStringList header;
    QStringList rows;
};

#define VERIFY_ALIGNED(view, count)                                                                \
    do {                                                                                           \
        const Edges edges(view);                                                                   \
        QCOMPARE(edges.header.join(u' '), edges.rows.join(u' '));                                  \
        QCOMPARE(edges.rows.size(), count);                                                        \
    } while (false)

int sectionSum(const QHeaderView *header, int count)
{
    int sum = 0;
    for (int i = 0; i < count; ++i)
        sum += header->sectionSize(i);
    return sum;
}

} // namespace

class KovaTableWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void columnsAreNumberedAsAdded();
    void buildsHeaderAndRows();
    void emptyColumnsDoNoHarm();
    void sharesTheSpareWidth();
    void minimumWins();
    void ratioOfZeroKeepsTheWidth();
    void alignedWhileDragging();
    void alignedWhenScrolledSideways_data();
    void alignedWhenScrolledSideways();
    void alignedWhenResized();
    void alignedWhenColumnsAreHidden_data();
    void alignedWhenColumnsAreHidden();
    void alignedWhenRowsAreResized();
    void scrollBarHidesWhenAllRowsFit();
    void keyboardWalksTheRows();
    void cellsHaveColumnNames();
    void nothingIsLeftBehind();
};

void KovaTableWidgetTest::initTestCase()
{
    setUpHost();
    StyleManager::getInstance()->initialize(
        {writeScratchFile(QStringLiteral("table.qss"),
                          "== component.table ==\n"
                          "QTableWidget { border: none; background-color: #FFFFFF; }\n"
                          "== component.table_header ==\n"
                          "QHeaderView { border: none; background-color: #FFFFFF; }\n"
                          "QHeaderView::section { border: none; border-right: 1px solid #FF0000;"
                          " background-color: #FFFFFF; }\n")});
}

void KovaTableWidgetTest::columnsAreNumberedAsAdded()
{
    KovaTableColumnsInfo columns;
    QVERIFY(columns.columns().empty());
    QCOMPARE(columns.addColumn(QStringLiteral("a"), 10, false, 0), 0);
    QCOMPARE(columns.addColumn(QStringLiteral("b"), 20, true, 0.25), 1);
    QCOMPARE(columns.columns()[1].title, QStringLiteral("b"));
    QCOMPARE(columns.columns()[1].width, 20);
    QVERIFY(columns.columns()[1].resizable);
    QCOMPARE(columns.columns()[1].ratio, 0.25);
}

void KovaTableWidgetTest::buildsHeaderAndRows()
{
    WarningCatcher warnings;
    KovaTableColumnsInfo columns = threeColumns();
    columns.addColumn(QStringLiteral("!"), 6, false, 0);
    KovaTableWidget view(columns, nullptr);
    QCOMPARE(warnings.take(), QStringList());
    const QHeaderView *header = view.getHeader();
    ResizeSignalTableWidget *table = view.getTable();

    QCOMPARE(header->count(), 5);
    QCOMPARE(table->columnCount(), 4);
    QCOMPARE(table->rowCount(), 0);
    const QStringList titles{QStringLiteral("Time"), QStringLiteral("User"),
                             QStringLiteral("Event"), QStringLiteral("!"), QString()};
    for (int i = 0; i < 5; ++i)
        QCOMPARE(header->model()->headerData(i, Qt::Horizontal).toString(), titles[i]);
    QCOMPARE(header->sectionSize(0), kovaPx(200));
    QCOMPARE(header->sectionSize(3), kovaPx(6));
    QCOMPARE(table->columnWidth(3), kovaPx(6));
    QCOMPARE(header->sectionSize(4), kovaPx(12));
    QCOMPARE(header->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(header->sectionResizeMode(1), QHeaderView::Interactive);
    QCOMPARE(header->sectionResizeMode(4), QHeaderView::Fixed);
    QCOMPARE(header->size(), QSize(kovaPx(20000), kovaPx(30)));
    QCOMPARE(header->styleSheet(), getStyleSheet("component.table_header", false));
    QCOMPARE(table->styleSheet(),
             getStyleSheet("component.table", false) + getStyleSheet("component.scrollbar", false));
    table->setRowCount(1);
    QCOMPARE(table->rowHeight(0), kovaPx(28));

    view.initailze();
    QCOMPARE(view.findChildren<ResizeSignalTableWidget *>().size(), 1);
}

void KovaTableWidgetTest::emptyColumnsDoNoHarm()
{
    KovaTableWidget view(KovaTableColumnsInfo(), nullptr);
    showTable(&view);
    QCOMPARE(view.getHeader()->count(), 1);
    QCOMPARE(view.getHeader()->sectionSize(0), kovaPx(12));
    QCOMPARE(view.getTable()->columnCount(), 0);
    view.resize(100, 100);
}

void KovaTableWidgetTest::sharesTheSpareWidth()
{
    KovaTableWidget view(threeColumns(), nullptr);
    view.slotTableResized({kovaPx(800), 100});
    for (const int column : {1, 2}) {
        QCOMPARE(view.getHeader()->sectionSize(column), kovaPx(300));
        QCOMPARE(view.getTable()->columnWidth(column), kovaPx(300));
    }
    QCOMPARE(view.getTable()->columnWidth(0), kovaPx(200));

    // Shares are truncated and never made to add up.
    KovaTableWidget third(threeColumns(1.0 / 3), nullptr);
    third.slotTableResized({kovaPx(200) + 1000, 100});
    QCOMPARE(third.getTable()->columnWidth(1), 333);
    KovaTableWidget wide(threeColumns(0.8), nullptr);
    wide.slotTableResized({kovaPx(200) + 1000, 100});
    QCOMPARE(wide.getTable()->columnWidth(1), 800);
    QCOMPARE(wide.getTable()->columnWidth(2), 800);
}

void KovaTableWidgetTest::minimumWins()
{
    const auto view = colourfulTable(threeColumns(), 3);
    showTable(view.get(), 300);
    QCOMPARE(view->getTable()->columnWidth(1), kovaPx(100));
    QCOMPARE(view->getTable()->columnWidth(2), kovaPx(100));
    QVERIFY(view->getTable()->horizontalScrollBar()->maximum() > 0);
}

void KovaTableWidgetTest::ratioOfZeroKeepsTheWidth()
{
    const auto view = colourfulTable(threeColumns(0), 3);
    showTable(view.get());
    QCOMPARE(view->getTable()->columnWidth(1), kovaPx(100));
    view->resize(kovaPx(500), kovaPx(200));
    QCOMPARE(view->getTable()->columnWidth(1), kovaPx(100));
    QCOMPARE(view->getHeader()->sectionResizeMode(1), QHeaderView::Interactive);
}

void KovaTableWidgetTest::alignedWhileDragging()
{
    const auto view = colourfulTable(threeColumns(), 3);
    showTable(view.get());
    VERIFY_ALIGNED(view.get(), 2);
    QWindow *window = view->windowHandle();
    // The edges before and behind are Fixed; the one between the shares can be dragged.
    const QPoint edge(kovaPx(200) + view->getHeader()->sectionSize(1) - 2, kovaPx(15));
    const int before = view->getHeader()->sectionSize(1);
    QTest::mouseMove(window, edge);
    QTest::mousePress(window, Qt::LeftButton, {}, edge);
    for (const int way : {-7, -41, -90, 33}) {
        QTest::mouseMove(window, edge + QPoint(way, 0));
        QCOMPARE(view->getHeader()->sectionSize(1), before + way);
        VERIFY_ALIGNED(view.get(), way > 0 ? 2 : 3);
    }
    QTest::mouseRelease(window, Qt::LeftButton, {}, edge + QPoint(33, 0));
    VERIFY_ALIGNED(view.get(), 2);

    const QPoint fixedEdge(kovaPx(200) - 2, kovaPx(15));
    QTest::mousePress(window, Qt::LeftButton, {}, fixedEdge);
    QTest::mouseMove(window, fixedEdge + QPoint(30, 0));
    QTest::mouseRelease(window, Qt::LeftButton, {}, fixedEdge + QPoint(30, 0));
    QCOMPARE(view->getTable()->columnWidth(0), kovaPx(200));
}

void KovaTableWidgetTest::alignedWhenScrolledSideways_data()
{
    QTest::addColumn<bool>("rightToLeft");
    QTest::newRow("left to right") << false;
    QTest::newRow("right to left") << true;
}

void KovaTableWidgetTest::alignedWhenScrolledSideways()
{
    QFETCH(bool, rightToLeft);
    KovaTableColumnsInfo columns;
    for (int i = 0; i < 12; ++i)
        columns.addColumn(QString::number(i), 61 + i, i % 2 == 0, 0);
    const auto view = colourfulTable(columns, 60);
    if (rightToLeft) {
        // The line of a section is at its end.
        view->setLayoutDirection(Qt::RightToLeft);
        view->getHeader()->setStyleSheet(view->getHeader()->styleSheet().replace(
            QLatin1String("-right"), QLatin1String("-left")));
    }
    showTable(view.get(), 400);
    QScrollBar *bar = view->getTable()->horizontalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    for (const int value : {0, 1, 37, bar->maximum() / 2, bar->maximum() - 1, bar->maximum()}) {
        bar->setValue(value);
        const Edges edges(view.get());
        QCOMPARE(edges.header.join(u' '), edges.rows.join(u' '));
        QVERIFY(edges.rows.size() >= 4);
    }
    // A wider window scrolls back.
    view->resize(kovaPx(700), kovaPx(200));
    const Edges edges(view.get());
    QCOMPARE(edges.header.join(u' '), edges.rows.join(u' '));
}

void KovaTableWidgetTest::alignedWhenResized()
{
    const auto view = colourfulTable(threeColumns(0.4), 60);
    showTable(view.get());
    const int scrollBar = view->width() - view->getTable()->viewport()->width();
    for (const int width : {701, 702, 555, 913, 640}) {
        view->resize(kovaPx(width), kovaPx(200));
        VERIFY_ALIGNED(view.get(), 3);
        const int spare = view->width() - scrollBar - kovaPx(200);
        QVERIFY(qAbs(view->getTable()->columnWidth(1) - 0.4 * spare) <= 1);
    }
}

void KovaTableWidgetTest::alignedWhenColumnsAreHidden_data()
{
    QTest::addColumn<bool>("hideInHeader");
    QTest::addColumn<bool>("showInHeader");
    QTest::newRow("in the header") << true << true;
    QTest::newRow("in the rows") << false << false;
    QTest::newRow("in the header, shown in the rows") << true << false;
    QTest::newRow("in the rows, shown in the header") << false << true;
}

void KovaTableWidgetTest::alignedWhenColumnsAreHidden()
{
    QFETCH(bool, hideInHeader);
    QFETCH(bool, showInHeader);
    KovaTableColumnsInfo columns = threeColumns(0.3);
    columns.addColumn(QStringLiteral("Size"), 80, false, 0);
    const auto view = colourfulTable(columns, 3);
    showTable(view.get());
    const QHeaderView *rows = view->getTable()->horizontalHeader();
    const auto part = [&view](bool header) {
        return header ? view->getHeader() : view->getTable()->horizontalHeader();
    };
    VERIFY_ALIGNED(view.get(), 4);
    const int before = rows->sectionSize(1);

    part(hideInHeader)->hideSection(1);
    part(hideInHeader)->hideSection(0);
    for (const QHeaderView *header : {rows, static_cast<const QHeaderView *>(view->getHeader())}) {
        QCOMPARE(header->sectionSize(1), 0);
        QCOMPARE(header->sectionPosition(2), 0);
    }
    QVERIFY(rows->isSectionHidden(0) && rows->isSectionHidden(1));
    VERIFY_ALIGNED(view.get(), 2);

    // A width that was shared meanwhile is the one to come back.
    view->resize(view->width() - 100, view->height());
    QVERIFY(rows->isSectionHidden(1));
    part(showInHeader)->showSection(0);
    part(showInHeader)->showSection(1);
    QVERIFY(qAbs(rows->sectionSize(1) - (before - 30)) <= 1);
    QCOMPARE(sectionSum(rows, 4), sectionSum(view->getHeader(), 4));
    VERIFY_ALIGNED(view.get(), 4);
}

void KovaTableWidgetTest::alignedWhenRowsAreResized()
{
    const auto view = colourfulTable(threeColumns(0.3), 3);
    showTable(view.get());
    view->getTable()->setColumnWidth(0, kovaPx(150));
    QCOMPARE(view->getHeader()->sectionSize(0), kovaPx(150));
    view->getTable()->resizeColumnsToContents();
    VERIFY_ALIGNED(view.get(), 3);
}

void KovaTableWidgetTest::scrollBarHidesWhenAllRowsFit()
{
    const auto view = colourfulTable(threeColumns(), 3);
    showTable(view.get());
    const QScrollBar *bar = view->getTable()->verticalScrollBar();
    QVERIFY(!bar->isVisible());
    const int width = view->getTable()->viewport()->width();
    view->getTable()->setRowCount(100);
    QTRY_VERIFY(bar->isVisible());
    QCOMPARE(view->getTable()->viewport()->width(), width);
    view->getTable()->setRowCount(2);
    QTRY_VERIFY(!bar->isVisible());
    QCOMPARE(view->getTable()->viewport()->width(), width);
    // The bar's column of the header is just as wide.
    QCOMPARE(view->width() - width, view->getHeader()->sectionSize(3));
}

void KovaTableWidgetTest::keyboardWalksTheRows()
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *view = colourfulTable(threeColumns(), 60).release();
    auto *field = new QLineEdit;
    layout->addWidget(view);
    layout->addWidget(field);
    window.resize(kovaPx(700), kovaPx(300));
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    ResizeSignalTableWidget *table = view->getTable();
    field->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    QVERIFY(table->hasFocus());
    table->setCurrentCell(0, 0);
    QTest::keyClick(window.windowHandle(), Qt::Key_Down);
    QCOMPARE(table->currentRow(), 1);
    QCOMPARE(table->selectionModel()->selectedRows().size(), 1);
    QTest::keyClick(window.windowHandle(), Qt::Key_PageDown);
    QVERIFY(table->currentRow() > 4 && table->currentRow() < 59);
    QTest::keyClick(window.windowHandle(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(table->currentRow(), 59);
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    QVERIFY(field->hasFocus());

    // A hidden column is no place for the keyboard to be.
    table->setCurrentCell(0, 0);
    view->getHeader()->hideSection(1);
    table->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Right);
    QCOMPARE(table->currentColumn(), 2);
}

void KovaTableWidgetTest::cellsHaveColumnNames()
{
    const auto view = colourfulTable(threeColumns(), 2);
    showTable(view.get());
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(view->getTable());
    QVERIFY(table && table->tableInterface());
    QCOMPARE(table->tableInterface()->columnDescription(2), QStringLiteral("Event"));
}

void KovaTableWidgetTest::nothingIsLeftBehind()
{
    const int before = QApplication::allWidgets().size();
    {
        const auto view = colourfulTable(threeColumns(), 200);
        showTable(view.get());
        QVERIFY(QApplication::allWidgets().size() > before);
    }
    QCOMPARE(QApplication::allWidgets().size(), before);
    // Parts that the host takes out and deletes on its own.
    auto *view = colourfulTable(threeColumns(), 2).release();
    delete view->getTable();
    delete view;
    QCOMPARE(QApplication::allWidgets().size(), before);
}

QTEST_MAIN(KovaTableWidgetTest)
#include "kova-table-widget-test.moc"
