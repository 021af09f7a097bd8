#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QColor hoverColor(0, 0, 255);

class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int count = 0;
};

} // namespace

// Moves the real pointer and looks at what is really on the screen: a picture made for the test
// would be painted anew and show no highlight that was left behind.
class KovaTreeHoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup();
    void followsThePointer_data();
    void followsThePointer();
    void changesRowsAtTheEdge();
    void staysUnderThePointerWhenRowsScroll();
    void staysUnderThePointerWhenRowsChange();
    void selectionGoesFirst();

private:
    void pointAt(int row);
    void pointOutside();
    QList<int> highlightedRows() const;

    ItemDelegate m_delegate;
    std::unique_ptr<KovaTreeWidget> m_tree;
};

void KovaTreeHoverTest::init()
{
    m_tree = std::make_unique<KovaTreeWidget>(nullptr);
    m_tree->setItemDelegate(&m_delegate);
    m_tree->setHeaderHidden(true);
    m_tree->setFocusPolicy(Qt::NoFocus);
    m_tree->setStyleSheet(getStyleSheet("theme.tree", false));
    m_tree->setBackgroundColor(Qt::red, hoverColor);
    m_tree->setGeometry(100, 100, kovaPx(240), kovaPx(210));
    for (int row = 0; row < 40; ++row)
        new QTreeWidgetItem(m_tree.get(), {QStringLiteral("Row %1").arg(row)});
    QCursor::setPos(0, 0);
}

void KovaTreeHoverTest::cleanup()
{
    m_tree.reset();
}

void KovaTreeHoverTest::pointAt(int row)
{
    const QWidget *viewport = m_tree->viewport();
    QCursor::setPos(
        viewport->mapToGlobal({viewport->width() - kovaPx(30), row * kovaPx(28) + kovaPx(14)}));
}

void KovaTreeHoverTest::pointOutside()
{
    QCursor::setPos(m_tree->mapToGlobal({m_tree->width() + 100, kovaPx(40)}));
}

// Counted from the top of the viewport.
QList<int> KovaTreeHoverTest::highlightedRows() const
{
    const QWidget *viewport = m_tree->viewport();
    const QPoint origin = viewport->mapTo(m_tree.get(), QPoint());
    const QImage picture = m_tree->screen()->grabWindow(m_tree->winId()).toImage();
    QList<int> rows;
    const int x = origin.x() + viewport->width() / 2;
    for (int row = 0; (row + 1) * kovaPx(28) < viewport->height(); ++row) {
        int pixels = 0;
        for (int y = row * kovaPx(28); y < (row + 1) * kovaPx(28); ++y)
            pixels += picture.pixelColor(x, origin.y() + y) != QColor(Qt::white) ? 1 : 0;
        if (pixels > 0)
            rows.append(pixels == kovaPx(28) ? row : -row);
    }
    return rows;
}

void KovaTreeHoverTest::followsThePointer_data()
{
    QTest::addColumn<bool>("framed");
    QTest::addColumn<bool>("rightToLeft");
    QTest::newRow("house style") << false << false;
    QTest::newRow("plain frame") << true << false;
    QTest::newRow("right to left") << false << true;
}

void KovaTreeHoverTest::followsThePointer()
{
    QFETCH(bool, framed);
    QFETCH(bool, rightToLeft);
    if (framed)
        m_tree->setStyleSheet(QString());
    if (rightToLeft)
        m_tree->setLayoutDirection(Qt::RightToLeft);
    m_tree->show();
    QVERIFY(QTest::qWaitForWindowActive(m_tree.get()));
    QTRY_COMPARE(highlightedRows(), QList<int>());
    for (const int row : {1, 2, 4, 3, 0}) {
        pointAt(row);
        QTRY_COMPARE(highlightedRows(), QList<int>{row});
    }
    pointOutside();
    QTRY_COMPARE(highlightedRows(), QList<int>());
    // Close to the edge where the rows begin.
    const int edge = rightToLeft ? m_tree->viewport()->width() - 5 : 5;
    QCursor::setPos(m_tree->viewport()->mapToGlobal({edge, kovaPx(42)}));
    QTRY_COMPARE(highlightedRows(), QList<int>{1});
}

void KovaTreeHoverTest::changesRowsAtTheEdge()
{
    m_tree->show();
    QVERIFY(QTest::qWaitForWindowActive(m_tree.get()));
    // Without a frame a row begins one pixel further down for the pointer than for the eye.
    const int edge = 2 * kovaPx(28) + 1;
    for (const int y : {edge - 2, edge - 1, edge, edge + 1, edge, edge - 1}) {
        QCursor::setPos(m_tree->viewport()->mapToGlobal({20, y}));
        QTRY_COMPARE(highlightedRows(), QList<int>{y < edge ? 1 : 2});
    }
}

void KovaTreeHoverTest::staysUnderThePointerWhenRowsScroll()
{
    // Only what has no style sheet is scrolled by moving pixels, and this only by small steps.
    m_tree->setStyleSheet(QString());
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    m_tree->show();
    QVERIFY(QTest::qWaitForWindowActive(m_tree.get()));
    QScrollBar *bar = m_tree->verticalScrollBar();
    // In the middle of a row, and at its edge.
    for (const int y : {kovaPx(28) + 14, 2 * kovaPx(28)}) {
        QCursor::setPos(m_tree->viewport()->mapToGlobal({20, y}));
        QTRY_COMPARE(highlightedRows(), QList<int>{1});
        for (const int value : {1, 2, 3, 2, 1, 0}) {
            const PaintCounter paints(m_tree->viewport());
            bar->setValue(value);
            QTRY_VERIFY(paints.count > 0);
            QTRY_COMPARE(highlightedRows(), QList<int>{1});
        }
    }
    pointOutside();
    QTRY_COMPARE(highlightedRows(), QList<int>());
}

void KovaTreeHoverTest::staysUnderThePointerWhenRowsChange()
{
    m_tree->show();
    QVERIFY(QTest::qWaitForWindowActive(m_tree.get()));
    pointAt(2);
    QTRY_COMPARE(highlightedRows(), QList<int>{2});
    const PaintCounter paints(m_tree->viewport());
    delete m_tree->topLevelItem(0);
    QTRY_VERIFY(paints.count > 0);
    QTRY_COMPARE(highlightedRows(), QList<int>{2});
    pointAt(4);
    QTRY_COMPARE(highlightedRows(), QList<int>{4});
    m_tree->clear();
    QTRY_COMPARE(highlightedRows(), QList<int>());
}

void KovaTreeHoverTest::selectionGoesFirst()
{
    m_tree->show();
    QVERIFY(QTest::qWaitForWindowActive(m_tree.get()));
    const auto colorOfRow = [this](int row) {
        const QPoint place = m_tree->viewport()->mapTo(
            m_tree.get(), QPoint(m_tree->viewport()->width() / 2, row * kovaPx(28) + kovaPx(14)));
        return m_tree->screen()->grabWindow(m_tree->winId()).toImage().pixelColor(place);
    };
    pointAt(2);
    QTRY_COMPARE(colorOfRow(2), hoverColor);
    m_tree->topLevelItem(2)->setSelected(true);
    QTRY_COMPARE(colorOfRow(2), QColor(Qt::red));
    m_tree->topLevelItem(2)->setSelected(false);
    QTRY_COMPARE(colorOfRow(2), hoverColor);
    pointAt(3);
    QTRY_COMPARE(highlightedRows(), QList<int>{3});
}

QTEST_MAIN(KovaTreeHoverTest)
#include "kova-tree-hover-test.moc"
