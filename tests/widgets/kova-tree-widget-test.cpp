// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

constexpr QRgb selectedColor = 0xffff0000;
constexpr QRgb white = 0xffffffff;

FileSystemTreeWidgetItem *newItem(const QString &name, const QString &tag = QString())
{
    auto *item = new FileSystemTreeWidgetItem;
    item->setText(0, name);
    item->tag = tag;
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    return item;
}

QSet<QRgb> colorsIn(const QImage &picture)
{
    QSet<QRgb> colors;
    for (int i = 0; i < picture.width() * picture.height(); ++i)
        colors.insert(picture.pixel(i % picture.width(), i / picture.width()));
    return colors;
}

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

// The tree and its delegate, in both directions of writing: what presses, keys and the focus do,
// how rows are painted, and how they are renamed and sorted. The highlight under the pointer is
// looked for with the real pointer on the real screen: a picture made for the test would be painted
// anew and show no highlight that was left behind.
class KovaTreeWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void initTestCase_data();
    void init();
    void cleanup() { m_tree.reset(); }
    void reportsRightPressesAndKeys();
    void focusAnnouncesARow();
    void scrollsSidewaysToTheItem();
    void highlightFillsTheRow();
    void ringRoundTheCurrentRow();
    void arrowsPointToTheName();
    void uncheckableRowsLookDisabled();
    void checkRectIsWhereTheBoxIs();
    void fileNamesOnly();
    void renamesInPlace();
    void homeStaysInFront();
    void highlightFollowsThePointer_data();
    void highlightFollowsThePointer();
    void highlightStaysUnderThePointerWhenRowsMove();

private:
    QTreeWidgetItem *item(int row) { return m_tree->topLevelItem(row); }
    QRect rectOf(int row) { return m_tree->visualItemRect(item(row)); }
    QImage picture() const { return m_tree->viewport()->grab().toImage(); }
    // Rows begin at its left in both directions.
    QImage turnedPicture() const { return picture().mirrored(m_tree->isRightToLeft(), false); }
    bool widen();
    void addRows();
    QLineEdit *openEditor(int row);
    void pointAt(const QPoint &place) { QCursor::setPos(m_tree->viewport()->mapToGlobal(place)); }
    QString look() const;

    ItemDelegate m_delegate;
    std::unique_ptr<KovaTreeWidget> m_tree;
};

void KovaTreeWidgetTest::initTestCase_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void KovaTreeWidgetTest::init()
{
    QFETCH_GLOBAL(Qt::LayoutDirection, direction);
    m_tree = std::make_unique<KovaTreeWidget>();
    m_tree->setItemDelegate(&m_delegate);
    m_tree->setHeaderHidden(true);
    m_tree->setStyleSheet(getStyleSheet("theme.tree", false));
    m_tree->setBackgroundColor(selectedColor, Qt::blue);
    m_tree->setLayoutDirection(direction);
    m_tree->setGeometry(100, 100, kovaPx(300), kovaPx(210));
    for (const char *name : {"Alpha", "Beta", "Gamma"})
        m_tree->addTopLevelItem(newItem(name));
    QCursor::setPos(0, 0);
    showActive(m_tree.get());
    // No row is current at first, for a selected one is highlighted too.
    m_tree->setCurrentItem(nullptr);
}

// Makes the only column far wider than the viewport.
bool KovaTreeWidgetTest::widen()
{
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->resizeSection(0, 4 * m_tree->viewport()->width());
    m_tree->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    return QTest::qWaitFor([this] { return m_tree->horizontalScrollBar()->maximum() > 0; });
}

// Adds more rows than fit, all of which reach beyond their column.
void KovaTreeWidgetTest::addRows()
{
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->resizeSection(0, kovaPx(90));
    for (int i = 0; i < 40; ++i)
        m_tree->addTopLevelItem(newItem("Delta"));
}

QLineEdit *KovaTreeWidgetTest::openEditor(int row)
{
    m_tree->setCurrentItem(item(row));
    m_tree->editItem(item(row));
    return m_tree->viewport()->findChild<QLineEdit *>();
}

void KovaTreeWidgetTest::reportsRightPressesAndKeys()
{
    QList<QTreeWidgetItem *> pressed;
    connect(m_tree.get(), &KovaTreeWidget::sigMouseRightClickEvent, m_tree.get(),
            [&](QMouseEvent *event) {
                pressed = {m_tree->itemAt(event->pos()), m_tree->currentItem()};
            });
    click(m_tree->viewport(), rectOf(1).center());
    QCOMPARE(m_tree->currentItem(), item(1));
    QVERIFY(pressed.isEmpty());
    QTest::mouseClick(m_tree->windowHandle(), Qt::RightButton, {},
                      m_tree->viewport()->mapTo(m_tree.get(), rectOf(0).center()));
    // Told of before the row was selected.
    QCOMPARE(pressed, (QList<QTreeWidgetItem *>{item(0), item(1)}));
    QVERIFY(item(0)->isSelected());

    QSignalSpy keys(m_tree.get(), &KovaTreeWidget::sigKeyPressEvent);
    press(m_tree.get(), {Qt::Key_Down, Qt::Key_F9, Qt::Key_Delete});
    QCOMPARE(keys.count(), 3);
    QCOMPARE(m_tree->currentItem(), item(1));
}

void KovaTreeWidgetTest::focusAnnouncesARow()
{
    m_tree->setCurrentItem(item(0));
    QList<QTreeWidgetItem *> announced;
    connect(m_tree.get(), &QTreeWidget::currentItemChanged, m_tree.get(),
            [&announced](QTreeWidgetItem *current) { announced.append(current); });
    const auto announcedOnFocus = [&] {
        announced.clear();
        m_tree->clearFocus();
        m_tree->setFocus(Qt::TabFocusReason);
        return announced;
    };
    QCOMPARE(announcedOnFocus(), (QList<QTreeWidgetItem *>{nullptr, item(0)}));
    m_tree->setCurrentItem(nullptr);
    QCOMPARE(announcedOnFocus(), QList<QTreeWidgetItem *>{item(0)});
    m_tree->clear();
    QCOMPARE(announcedOnFocus(), QList<QTreeWidgetItem *>());
}

void KovaTreeWidgetTest::scrollsSidewaysToTheItem()
{
    QVERIFY(widen());
    const int width = m_tree->viewport()->width();
    QScrollBar *bar = m_tree->horizontalScrollBar();
    // Where an item begins in the viewport is its indentation less what is scrolled.
    const auto scrollFrom = [&](int begin) {
        m_tree->setIndentation(begin + width);
        bar->setValue(width);
        const QRect rect = rectOf(0);
        if ((m_tree->isRightToLeft() ? width - 1 - rect.right() : rect.left()) != begin)
            qFatal("the item is not where the test wants it");
        m_tree->updateScrollArea(item(0));
        return bar->value();
    };
    QCOMPARE(scrollFrom(0), width);
    QCOMPARE(scrollFrom(width - kovaPx(100)), width);
    const int tooFar = width - kovaPx(100) + 1;
    QCOMPARE(scrollFrom(tooFar), tooFar + width - width / 2);
    QCOMPARE(scrollFrom(-5), width - 5 - width / 2);
    m_tree->updateScrollArea(nullptr);
}

void KovaTreeWidgetTest::highlightFillsTheRow()
{
    QVERIFY(widen());
    m_tree->clearFocus();
    item(1)->setText(0, QString());
    m_tree->setCurrentItem(item(1));
    m_tree->horizontalScrollBar()->setValue(37);

    const QImage shown = turnedPicture();
    const int height = kovaPx(28);
    const int width = int(shown.width() - 3 * DPIinfo::getInstance()->getDPI());
    const int middle = height + height / 2;
    QCOMPARE(colorsIn(shown.copy(1, middle, width - 2, 1)), QSet<QRgb>{selectedColor});
    QCOMPARE(colorsIn(shown.copy(width + 1, middle, shown.width() - width - 1, 1)),
             QSet<QRgb>{white});
    QCOMPARE(colorsIn(shown.copy(shown.width() / 2, height + 1, 1, height - 2)),
             QSet<QRgb>{selectedColor});
    // Round corners, and nothing on the neighbours.
    QVERIFY(shown.pixel(1, height + 1) != selectedColor);
    for (const int y : {height - 1, 2 * height})
        QCOMPARE(shown.pixel(shown.width() / 2, y), white);

    // Hosts need not choose colours.
    m_tree->setBackgroundColor(QColor(), QColor());
    QCOMPARE(picture().pixelColor(shown.width() / 2, middle), QColor(Qt::black));
}

void KovaTreeWidgetTest::ringRoundTheCurrentRow()
{
    QVERIFY(widen());
    QVERIFY(m_tree->focusColor().isValid()); // from the style of the theme
    // At both ends and at the upper and lower edge of the row.
    const auto hasRing = [this](int row) {
        const QImage shown = turnedPicture();
        const int top = row * kovaPx(28);
        const int right = int(shown.width() - 3 * DPIinfo::getInstance()->getDPI()) - 3;
        const int middle = top + kovaPx(14);
        int count = 0;
        for (const QPoint &place : {QPoint(2, middle), QPoint(right, middle),
                                    QPoint(shown.width() / 2, top + 1 + kovaPx(1)),
                                    QPoint(shown.width() / 2, top + kovaPx(28) - 2 - kovaPx(1))})
            count += shown.pixelColor(place) == m_tree->focusColor() ? 1 : 0;
        if (count % 4 != 0)
            qFatal("a part of the ring");
        return count == 4;
    };
    m_tree->setCurrentItem(item(0), 0, QItemSelectionModel::NoUpdate);
    QVERIFY(hasRing(0) && !hasRing(1));
    press(m_tree.get(), Qt::Key_Down);
    QVERIFY(!hasRing(0) && hasRing(1));
    m_tree->clearFocus();
    QVERIFY(!hasRing(1));
    m_tree->setFocus(Qt::TabFocusReason);
    QVERIFY(hasRing(1));
    m_tree->setFocusColor(QColor());
    QVERIFY(picture().pixel(m_tree->viewport()->width() / 2, kovaPx(28) + 2) == selectedColor);
}

void KovaTreeWidgetTest::arrowsPointToTheName()
{
    item(0)->addChild(newItem("Delta"));
    m_tree->setCurrentItem(item(2));
    // Where the arrow of the first row is darkest in a line: its point is in the middle one.
    const auto darkest = [this](int line) {
        const QImage shown = picture();
        const int begin = m_tree->isRightToLeft() ? rectOf(0).right() + 1 : 0;
        int at = begin;
        for (int x = begin; x < begin + m_tree->indentation(); ++x)
            at = qGray(shown.pixel(x, line)) < qGray(shown.pixel(at, line)) ? x : at;
        return at;
    };
    const auto arrow = [&] { return darkest(kovaPx(14)) - darkest(kovaPx(14) - kovaPx(2)); };
    QVERIFY(m_tree->isRightToLeft() ? arrow() < 0 : arrow() > 0);
    // The direction may change while the tree is shown.
    m_tree->setLayoutDirection(m_tree->isRightToLeft() ? Qt::LeftToRight : Qt::RightToLeft);
    QVERIFY(m_tree->isRightToLeft() ? arrow() < 0 : arrow() > 0);
}

void KovaTreeWidgetTest::uncheckableRowsLookDisabled()
{
    m_tree->setStyleSheet(QString());
    QPalette palette = m_tree->palette();
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::green);
    m_tree->setPalette(palette);
    // Thin letters have no pixel of the full colour.
    m_tree->setFont(QFont(m_tree->font().family(), 20));
    item(1)->setFlags(item(1)->flags() & ~Qt::ItemIsUserCheckable);
    const auto shows = [this](int row, const QColor &color) {
        return colorsIn(picture().copy(rectOf(row))).contains(color.rgb());
    };
    QTRY_VERIFY(shows(2, Qt::black) && !shows(2, Qt::green));
    QVERIFY(shows(1, Qt::green) && !shows(1, Qt::black));
}

void KovaTreeWidgetTest::checkRectIsWhereTheBoxIs()
{
    item(1)->setText(0, "two\nlines");
    item(2)->setCheckState(0, Qt::Unchecked);
    picture();
    QVERIFY(rectOf(2).contains(g_check_rect));
    // Rows have one height, whatever their text.
    QVERIFY(qAbs(g_check_rect.center().y() - (2 * kovaPx(28) + kovaPx(14))) <= 1);
    click(m_tree->viewport(), g_check_rect.center());
    QCOMPARE(item(2)->checkState(0), Qt::Checked);
}

void KovaTreeWidgetTest::fileNamesOnly()
{
    const auto typed = [this](const char *letters) {
        QLineEdit *edit = openEditor(0);
        if (edit->selectedText() != edit->text())
            qFatal("the old name is in the way");
        for (; *letters; ++letters)
            QTest::keyClick(m_tree->windowHandle(), *letters);
        const QString taken = edit->text();
        delete edit;
        return taken;
    };
    QCOMPARE(typed("(new) [copy] 2024.txt."), "(new) [copy] 2024.txt.");
    QCOMPARE(typed(".hidden"), "hidden");
    QCOMPARE(typed("a/b\\c:d"), "abcd");
    QCOMPARE(typed("what? <*> \"now\"|"), "what  now");
}

void KovaTreeWidgetTest::renamesInPlace()
{
    QSignalSpy escapes(&m_delegate, &ItemDelegate::sigKeyPressed);
    QPointer<QLineEdit> edit = openEditor(1);
    QCOMPARE(edit->styleSheet(), getStyleSheet("component.tree_item", false));
    press(m_tree.get(), {Qt::Key_D, Qt::Key_Return});
    QTRY_VERIFY(!edit);
    QCOMPARE(item(1)->text(0), "d");

    // Nothing is no name.
    edit = openEditor(1);
    press(m_tree.get(), {Qt::Key_Delete, Qt::Key_Return});
    QVERIFY(edit && edit->isVisible());

    // A change from outside reaches the open field.
    item(1)->setText(0, "Epsilon");
    QCOMPARE(edit->text(), "Epsilon");
    QCOMPARE(edit->findChildren<QValidator *>().size(), 1);

    press(m_tree.get(), Qt::Key_X);
    QCOMPARE(escapes.count(), 0);
    press(m_tree.get(), Qt::Key_Escape);
    QCOMPARE(escapes.count(), 1);
    QTRY_VERIFY(!edit);
    QCOMPARE(item(1)->text(0), "Epsilon");
}

void KovaTreeWidgetTest::homeStaysInFront()
{
    m_tree->clear();
    m_tree->addTopLevelItem(newItem("Home", "home"));
    for (const char *name : {"Music", "Archive", "Zoo", "Books"})
        m_tree->addTopLevelItem(newItem(name, "Home"));
    const auto sorted = [this](Qt::SortOrder order) {
        m_tree->sortItems(0, order);
        QStringList names;
        for (int row = 0; row < m_tree->topLevelItemCount(); ++row)
            names.append(item(row)->text(0));
        return names.join(" ");
    };
    QCOMPARE(sorted(Qt::AscendingOrder), "Home Archive Books Music Zoo");
    QCOMPARE(sorted(Qt::AscendingOrder), "Home Archive Books Music Zoo");
    // Only those whose text sorts before its own stay behind it the other way round.
    QCOMPARE(sorted(Qt::DescendingOrder), "Zoo Music Home Books Archive");
    QVERIFY_EXCEPTION_THROWN((void)(*item(0) < QTreeWidgetItem()), std::bad_cast);
}

// The rows with a highlight, counted from the top of the viewport: "hover 2", "selected 2", or
// "remains 2" if it does not fill the row.
QString KovaTreeWidgetTest::look() const
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

void KovaTreeWidgetTest::highlightFollowsThePointer_data()
{
    QTest::addColumn<bool>("framed");
    QTest::newRow("house style") << false;
    QTest::newRow("plain frame") << true;
}

void KovaTreeWidgetTest::highlightFollowsThePointer()
{
    QFETCH(bool, framed);
    if (framed)
        m_tree->setStyleSheet(QString());
    addRows();
    QTRY_VERIFY(m_tree->verticalScrollBar()->isVisible());
    const QPoint outside(m_tree->width() + 100, kovaPx(40));
    // Close to the edge where the rows begin.
    const QPoint edge(m_tree->isRightToLeft() ? m_tree->viewport()->width() - 5 : 5, kovaPx(42));
    const QPair<QPoint, QString> ways[] = {{outside, ""},
                                           {{kovaPx(200), kovaPx(42)}, "hover 1"},
                                           {{kovaPx(200), kovaPx(126)}, "hover 4"},
                                           {{kovaPx(200), kovaPx(14)}, "hover 0"},
                                           {outside, ""},
                                           {edge, "hover 1"}};
    for (const auto &[place, expected] : ways) {
        pointAt(place);
        QTRY_COMPARE(look(), expected);
    }
    // The highlight of the selection goes first.
    for (const bool isSelected : {true, false}) {
        item(1)->setSelected(isSelected);
        QTRY_COMPARE(look(), isSelected ? "selected 1" : "hover 1");
    }
    // Without a frame a row begins one pixel further down for the pointer than for the eye.
    const int seam = 2 * kovaPx(28) + 1;
    for (const int y : {seam - 2, seam - 1, seam, seam + 1, seam, seam - 1}) {
        pointAt({20, y});
        if (!framed)
            QTRY_COMPARE(look(), y < seam ? "hover 1" : "hover 2");
    }
}

void KovaTreeWidgetTest::highlightStaysUnderThePointerWhenRowsMove()
{
    // Only what has no style sheet is scrolled by moving pixels, and this only by small steps.
    m_tree->setStyleSheet(QString());
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    addRows();
    // In the middle of a row, and at its edge.
    for (const int y : {kovaPx(28) + 14, 2 * kovaPx(28)}) {
        pointAt({20, y});
        QTRY_COMPARE(look(), "hover 1");
        for (const int value : {1, 2, 3, 2, 1, 0}) {
            const PaintCounter paints(m_tree->viewport());
            m_tree->verticalScrollBar()->setValue(value);
            QTRY_VERIFY(paints.count > 0);
            QTRY_COMPARE(look(), "hover 1");
        }
    }
    const PaintCounter paints(m_tree->viewport());
    delete item(0);
    QTRY_VERIFY(paints.count > 0);
    QTRY_COMPARE(look(), "hover 1");
    m_tree->clear();
    QTRY_COMPARE(look(), "");
}

QTEST_MAIN(KovaTreeWidgetTest)
#include "kova-tree-widget-test.moc"
