// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

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
    void cleanup() { m_tree.reset(); }
    void followsThePointer_data();
    void followsThePointer();
    void changesRowsAtTheEdge();
    void staysUnderThePointerWhenRowsScroll();
    void staysUnderThePointerWhenRowsChange();

private:
    void pointAt(int x, int y) { QCursor::setPos(m_tree->viewport()->mapToGlobal({x, y})); }
    void pointAtRow(int row) { pointAt(kovaPx(200), row * kovaPx(28) + kovaPx(14)); }
    void pointOutside() { pointAt(m_tree->width() + 100, kovaPx(40)); }
    QString look() const;

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
    m_tree->setBackgroundColor(Qt::red, Qt::blue);
    m_tree->setGeometry(100, 100, kovaPx(240), kovaPx(210));
    // Rows reach beyond their column.
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->resizeSection(0, kovaPx(90));
    for (int row = 0; row < 40; ++row)
        new QTreeWidgetItem(m_tree.get(), {QString("Row %1").arg(row)});
    QCursor::setPos(0, 0);
}

// The rows with a highlight, counted from the top of the viewport: "hover 2", "selected 2", or
// "remains 2" if it does not fill the row.
QString KovaTreeHoverTest::look() const
{
    const QWidget *viewport = m_tree->viewport();
    const QPoint origin = viewport->mapTo(m_tree.get(), QPoint(viewport->width() / 2, 0));
    const QImage picture = m_tree->screen()->grabWindow(m_tree->winId()).toImage();
    const auto colorAt = [&](int y) { return picture.pixelColor(origin + QPoint(0, y)); };
    const int height = kovaPx(28);
    QStringList rows;
    for (int row = 0; (row + 1) * height < viewport->height(); ++row) {
        int pixels = 0;
        for (int y = row * height; y < (row + 1) * height; ++y)
            pixels += colorAt(y) == QColor(Qt::white) ? 0 : 1;
        const bool isHover = colorAt(row * height + height / 2) == QColor(Qt::blue);
        const QString kind = pixels < height ? "remains" : isHover ? "hover" : "selected";
        if (pixels > 0)
            rows.append(kind + QString(" %1").arg(row));
    }
    return rows.join(", ");
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
    showActive(m_tree.get());
    QTRY_COMPARE(look(), "");
    for (const int row : {1, 4, 0}) {
        pointAtRow(row);
        QTRY_COMPARE(look(), QString("hover %1").arg(row));
    }
    pointOutside();
    QTRY_COMPARE(look(), "");
    // Close to the edge where the rows begin.
    pointAt(rightToLeft ? m_tree->viewport()->width() - 5 : 5, kovaPx(42));
    QTRY_COMPARE(look(), "hover 1");

    // The highlight of the selection goes first.
    m_tree->topLevelItem(1)->setSelected(true);
    QTRY_COMPARE(look(), "selected 1");
    m_tree->topLevelItem(1)->setSelected(false);
    QTRY_COMPARE(look(), "hover 1");
}

void KovaTreeHoverTest::changesRowsAtTheEdge()
{
    showActive(m_tree.get());
    // Without a frame a row begins one pixel further down for the pointer than for the eye.
    const int edge = 2 * kovaPx(28) + 1;
    for (const int y : {edge - 2, edge - 1, edge, edge + 1, edge, edge - 1}) {
        pointAt(20, y);
        QTRY_COMPARE(look(), y < edge ? "hover 1" : "hover 2");
    }
}

void KovaTreeHoverTest::staysUnderThePointerWhenRowsScroll()
{
    // Only what has no style sheet is scrolled by moving pixels, and this only by small steps.
    m_tree->setStyleSheet(QString());
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    showActive(m_tree.get());
    // In the middle of a row, and at its edge.
    for (const int y : {kovaPx(28) + 14, 2 * kovaPx(28)}) {
        pointAt(20, y);
        QTRY_COMPARE(look(), "hover 1");
        for (const int value : {1, 2, 3, 2, 1, 0}) {
            const PaintCounter paints(m_tree->viewport());
            m_tree->verticalScrollBar()->setValue(value);
            QTRY_VERIFY(paints.count > 0);
            QTRY_COMPARE(look(), "hover 1");
        }
    }
    pointOutside();
    QTRY_COMPARE(look(), "");
}

void KovaTreeHoverTest::staysUnderThePointerWhenRowsChange()
{
    showActive(m_tree.get());
    pointAtRow(2);
    QTRY_COMPARE(look(), "hover 2");
    const PaintCounter paints(m_tree->viewport());
    delete m_tree->topLevelItem(0);
    QTRY_VERIFY(paints.count > 0);
    QTRY_COMPARE(look(), "hover 2");
    m_tree->clear();
    QTRY_COMPARE(look(), "");
}

QTEST_MAIN(KovaTreeHoverTest)
#include "kova-tree-hover-test.moc"
