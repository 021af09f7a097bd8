// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QColor selectedColor(255, 0, 0);

FileSystemTreeWidgetItem *newItem(const QString &name, const QString &tag = QString())
{
    auto *item = new FileSystemTreeWidgetItem;
    item->setText(0, name);
    item->tag = tag;
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    return item;
}

// A tree as hosts set one up, with rows named Alpha, Beta and Gamma.
struct Fixture
{
    explicit Fixture(Qt::LayoutDirection direction = Qt::LeftToRight)
    {
        tree.setItemDelegate(&delegate);
        tree.setHeaderHidden(true);
        tree.setStyleSheet(getStyleSheet("theme.tree", false));
        tree.setBackgroundColor(selectedColor, Qt::blue);
        tree.setLayoutDirection(direction);
        tree.resize(kovaPx(300), kovaPx(200));
        for (const char *name : {"Alpha", "Beta", "Gamma"})
            tree.addTopLevelItem(newItem(name));
        showActive(&tree);
        // No row is to be under the pointer by chance.
        QCursor::setPos(tree.mapToGlobal(tree.rect().bottomRight() + QPoint(50, 50)));
    }

    QTreeWidgetItem *item(int row) { return tree.topLevelItem(row); }
    QRect place(int row) { return tree.visualItemRect(item(row)); }
    QImage picture() { return tree.viewport()->grab().toImage(); }

    // Makes the only column far wider than the viewport.
    void widen()
    {
        tree.header()->setStretchLastSection(false);
        tree.header()->resizeSection(0, 4 * tree.viewport()->width());
        tree.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        QTRY_VERIFY(tree.horizontalScrollBar()->maximum() > 0);
    }

    QLineEdit *openEditor(int row)
    {
        tree.setCurrentItem(item(row));
        tree.editItem(item(row));
        return tree.viewport()->findChild<QLineEdit *>();
    }

    ItemDelegate delegate;
    KovaTreeWidget tree;
};

} // namespace

class KovaTreeWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
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
};

void KovaTreeWidgetTest::reportsRightPressesAndKeys()
{
    Fixture f;
    QList<QTreeWidgetItem *> pressed;
    connect(&f.tree, &KovaTreeWidget::sigMouseRightClickEvent, &f.tree, [&](QMouseEvent *event) {
        pressed = {f.tree.itemAt(event->pos()), f.tree.currentItem()};
    });
    click(f.tree.viewport(), f.place(1).center());
    QCOMPARE(f.tree.currentItem(), f.item(1));
    QVERIFY(pressed.isEmpty());
    QTest::mouseClick(f.tree.windowHandle(), Qt::RightButton, {},
                      f.tree.viewport()->mapTo(&f.tree, f.place(0).center()));
    // Told of before the row was selected.
    QCOMPARE(pressed, (QList<QTreeWidgetItem *>{f.item(0), f.item(1)}));
    QVERIFY(f.item(0)->isSelected());

    QSignalSpy keys(&f.tree, &KovaTreeWidget::sigKeyPressEvent);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_F9, Qt::Key_Delete})
        press(&f.tree, key);
    QCOMPARE(keys.count(), 3);
    QCOMPARE(f.tree.currentItem(), f.item(1));
}

void KovaTreeWidgetTest::focusAnnouncesARow()
{
    Fixture f;
    QList<QTreeWidgetItem *> announced;
    connect(&f.tree, &QTreeWidget::currentItemChanged, &f.tree,
            [&announced](QTreeWidgetItem *current) { announced.append(current); });
    const auto announcedOnFocus = [&] {
        announced.clear();
        f.tree.clearFocus();
        f.tree.setFocus(Qt::TabFocusReason);
        return announced;
    };
    QCOMPARE(announcedOnFocus(), (QList<QTreeWidgetItem *>{nullptr, f.item(0)}));
    f.tree.setCurrentItem(nullptr);
    QCOMPARE(announcedOnFocus(), QList<QTreeWidgetItem *>{f.item(0)});
    f.tree.clear();
    QCOMPARE(announcedOnFocus(), QList<QTreeWidgetItem *>());
}

void KovaTreeWidgetTest::scrollsSidewaysToTheItem()
{
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        Fixture f(direction);
        f.widen();
        const int width = f.tree.viewport()->width();
        QScrollBar *bar = f.tree.horizontalScrollBar();
        // Where an item begins in the viewport is its indentation less what is scrolled.
        const auto scrollFrom = [&](int begin) {
            f.tree.setIndentation(begin + width);
            bar->setValue(width);
            const QRect place = f.place(0);
            if ((f.tree.isRightToLeft() ? width - 1 - place.right() : place.left()) != begin)
                qFatal("the item is not where the test wants it");
            f.tree.updateScrollArea(f.item(0));
            return bar->value();
        };
        QCOMPARE(scrollFrom(0), width);
        QCOMPARE(scrollFrom(width - kovaPx(100)), width);
        const int tooFar = width - kovaPx(100) + 1;
        QCOMPARE(scrollFrom(tooFar), tooFar + width - width / 2);
        QCOMPARE(scrollFrom(-5), width - 5 - width / 2);
        f.tree.updateScrollArea(nullptr);
    }
}

void KovaTreeWidgetTest::highlightFillsTheRow()
{
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        Fixture f(direction);
        f.widen();
        f.tree.clearFocus();
        f.item(1)->setText(0, QString());
        f.tree.setCurrentItem(f.item(1));
        f.tree.horizontalScrollBar()->setValue(37);

        const QImage picture = f.picture().mirrored(direction == Qt::RightToLeft, false);
        const int height = kovaPx(28);
        const int width = int(picture.width() - 3 * DPIinfo::getInstance()->getDPI());
        const int middle = height + height / 2;
        for (int x = 1; x < width - 1; ++x)
            QCOMPARE(picture.pixelColor(x, middle), selectedColor);
        for (int x = width + 1; x < picture.width(); ++x)
            QCOMPARE(picture.pixelColor(x, middle), QColor(Qt::white));
        for (const int y : {height + 1, 2 * height - 2})
            QCOMPARE(picture.pixelColor(picture.width() / 2, y), selectedColor);
        // Round corners, and nothing on the neighbours.
        QVERIFY(picture.pixelColor(1, height + 1) != selectedColor);
        for (const int y : {height - 1, 2 * height})
            QCOMPARE(picture.pixelColor(picture.width() / 2, y), QColor(Qt::white));

        // Hosts need not choose colours.
        f.tree.setBackgroundColor(QColor(), QColor());
        QCOMPARE(f.picture().pixelColor(picture.width() / 2, middle), QColor(Qt::black));
    }
}

void KovaTreeWidgetTest::ringRoundTheCurrentRow()
{
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        Fixture f(direction);
        f.widen();
        QVERIFY(f.tree.focusColor().isValid()); // from the style of the theme
        // At both ends and at the upper and lower edge of the row.
        const auto hasRing = [&f](int row) {
            const QImage picture = f.picture().mirrored(f.tree.isRightToLeft(), false);
            const int top = row * kovaPx(28);
            const int right = int(picture.width() - 3 * DPIinfo::getInstance()->getDPI()) - 3;
            const int middle = top + kovaPx(14);
            const QPoint places[] = {{2, middle},
                                     {right, middle},
                                     {picture.width() / 2, top + 1 + kovaPx(1)},
                                     {picture.width() / 2, top + kovaPx(28) - 2 - kovaPx(1)}};
            int count = 0;
            for (const QPoint &place : places)
                count += picture.pixelColor(place) == f.tree.focusColor() ? 1 : 0;
            if (count % 4 != 0)
                qFatal("a part of the ring");
            return count == 4;
        };
        f.tree.setCurrentItem(f.item(0), 0, QItemSelectionModel::NoUpdate);
        QVERIFY(hasRing(0) && !hasRing(1));
        press(&f.tree, Qt::Key_Down);
        QVERIFY(!hasRing(0) && hasRing(1));
        f.tree.clearFocus();
        QVERIFY(!hasRing(1));
        f.tree.setFocus(Qt::TabFocusReason);
        QVERIFY(hasRing(1));
        f.tree.setFocusColor(QColor());
        QVERIFY(f.picture().pixelColor(f.tree.viewport()->width() / 2, kovaPx(28) + 2)
                == selectedColor);
    }
}

void KovaTreeWidgetTest::arrowsPointToTheName()
{
    Fixture f;
    f.item(0)->addChild(newItem("Delta"));
    f.tree.setCurrentItem(f.item(2));
    // Where the arrow of the first row is darkest in a line: its point is in the middle one.
    const auto darkest = [&f](int line) {
        const QImage picture = f.picture();
        const int begin = f.tree.isRightToLeft() ? f.place(0).right() + 1 : 0;
        int at = begin;
        for (int x = begin; x < begin + f.tree.indentation(); ++x)
            at = qGray(picture.pixel(x, line)) < qGray(picture.pixel(at, line)) ? x : at;
        return at;
    };
    // The direction may change while the tree is shown.
    for (const auto direction : {Qt::RightToLeft, Qt::LeftToRight, Qt::RightToLeft}) {
        f.tree.setLayoutDirection(direction);
        const int point = darkest(kovaPx(14)) - darkest(kovaPx(14) - kovaPx(2));
        QVERIFY2(direction == Qt::RightToLeft ? point < 0 : point > 0,
                 qPrintable(QString::number(point)));
    }
}

void KovaTreeWidgetTest::uncheckableRowsLookDisabled()
{
    Fixture f;
    f.tree.setStyleSheet(QString());
    QPalette palette = f.tree.palette();
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::green);
    f.tree.setPalette(palette);
    f.item(1)->setFlags(f.item(1)->flags() & ~Qt::ItemIsUserCheckable);
    const auto shows = [&f](int row, const QColor &color) {
        const QImage picture = f.picture().copy(f.place(row));
        for (int i = 0; i < picture.width() * picture.height(); ++i) {
            if (picture.pixelColor(i % picture.width(), i / picture.width()) == color)
                return true;
        }
        return false;
    };
    QVERIFY(shows(2, Qt::black) && !shows(2, Qt::green));
    QVERIFY(shows(1, Qt::green) && !shows(1, Qt::black));
}

void KovaTreeWidgetTest::checkRectIsWhereTheBoxIs()
{
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        Fixture f(direction);
        f.item(1)->setText(0, "two\nlines");
        f.item(2)->setCheckState(0, Qt::Unchecked);
        f.picture();
        QVERIFY(f.place(2).contains(g_check_rect));
        // Rows have one height, whatever their text.
        QVERIFY(qAbs(g_check_rect.center().y() - (2 * kovaPx(28) + kovaPx(14))) <= 1);
        click(f.tree.viewport(), g_check_rect.center());
        QCOMPARE(f.item(2)->checkState(0), Qt::Checked);
    }
}

void KovaTreeWidgetTest::fileNamesOnly()
{
    Fixture f;
    const auto typed = [&f](const char *letters) {
        QLineEdit *edit = f.openEditor(0);
        if (edit->selectedText() != edit->text())
            qFatal("the old name is in the way");
        for (; *letters; ++letters)
            QTest::keyClick(f.tree.windowHandle(), *letters);
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
    Fixture f;
    QSignalSpy escapes(&f.delegate, &ItemDelegate::sigKeyPressed);
    QPointer<QLineEdit> edit = f.openEditor(1);
    QCOMPARE(edit->styleSheet(), getStyleSheet("component.tree_item", false));
    press(&f.tree, Qt::Key_D);
    press(&f.tree, Qt::Key_Return);
    QTRY_VERIFY(!edit);
    QCOMPARE(f.item(1)->text(0), "d");

    // Nothing is no name.
    edit = f.openEditor(1);
    press(&f.tree, Qt::Key_Delete);
    press(&f.tree, Qt::Key_Return);
    QVERIFY(edit && edit->isVisible());

    // A change from outside reaches the open field.
    f.item(1)->setText(0, "Epsilon");
    QCOMPARE(edit->text(), "Epsilon");
    QCOMPARE(edit->findChildren<QValidator *>().size(), 1);

    press(&f.tree, Qt::Key_X);
    QCOMPARE(escapes.count(), 0);
    press(&f.tree, Qt::Key_Escape);
    QCOMPARE(escapes.count(), 1);
    QTRY_VERIFY(!edit);
    QCOMPARE(f.item(1)->text(0), "Epsilon");
}

void KovaTreeWidgetTest::homeStaysInFront()
{
    KovaTreeWidget tree;
    tree.addTopLevelItem(newItem("Home", "home"));
    for (const char *name : {"Music", "Archive", "Zoo", "Books"})
        tree.addTopLevelItem(newItem(name, "Home"));
    const auto sorted = [&tree](Qt::SortOrder order) {
        tree.sortItems(0, order);
        QStringList names;
        for (int row = 0; row < tree.topLevelItemCount(); ++row)
            names.append(tree.topLevelItem(row)->text(0));
        return names.join(" ");
    };
    QCOMPARE(sorted(Qt::AscendingOrder), "Home Archive Books Music Zoo");
    QCOMPARE(sorted(Qt::AscendingOrder), "Home Archive Books Music Zoo");
    // Only those whose text sorts before its own stay behind it the other way round.
    QCOMPARE(sorted(Qt::DescendingOrder), "Zoo Music Home Books Archive");
    QVERIFY_EXCEPTION_THROWN((void)(*tree.topLevelItem(0) < QTreeWidgetItem()), std::bad_cast);
}

QTEST_MAIN(KovaTreeWidgetTest)
#include "kova-tree-widget-test.moc"
