#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

const QColor selectedColor(255, 0, 0);

// A tree as hosts set one up, with named rows.
struct Fixture
{
    explicit Fixture(const QStringList &names)
    {
        tree.setItemDelegate(&delegate);
        tree.setHeaderHidden(true);
        tree.setStyleSheet(getStyleSheet("theme.tree", false));
        tree.setBackgroundColor(selectedColor, Qt::blue);
        tree.resize(kovaPx(300), kovaPx(200));
        for (const QString &name : names)
            add(name);
    }

    FileSystemTreeWidgetItem *add(const QString &name, const QString &tag = QString())
    {
        auto *item = new FileSystemTreeWidgetItem;
        item->setText(0, name);
        item->tag = tag;
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        tree.addTopLevelItem(item);
        return item;
    }

    void show()
    {
        tree.show();
        QVERIFY(QTest::qWaitForWindowActive(&tree));
        // No row is to be under the pointer by chance.
        QCursor::setPos(tree.mapToGlobal(tree.rect().bottomRight() + QPoint(50, 50)));
    }

    QTreeWidgetItem *item(int row) { return tree.topLevelItem(row); }

    QPoint center(int row)
    {
        const QRect rect = tree.visualItemRect(item(row));
        return tree.viewport()->mapTo(&tree, QPoint(rect.left() + kovaPx(40), rect.center().y()));
    }

    QStringList names()
    {
        QStringList list;
        for (int row = 0; row < tree.topLevelItemCount(); ++row)
            list.append(item(row)->text(0));
        return list;
    }

    // Makes the only column far wider than the viewport.
    void widen(int pixels)
    {
        tree.header()->setStretchLastSection(false);
        tree.header()->setSectionResizeMode(QHeaderView::Fixed);
        tree.header()->resizeSection(0, pixels);
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

QStringList threeNames()
{
    return {QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Gamma")};
}

} // namespace

class KovaTreeWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void rightPressIsReportedAndSelects();
    void everyKeyIsReported();
    void focusAnnouncesARow();
    void scrollsSidewaysToTheItem();
    void scrollsSidewaysRightToLeft();
    void highlightFillsTheRow_data();
    void highlightFillsTheRow();
    void highlightNeedsNoColours();
    void rowsHaveTheHouseHeight();
    void uncheckableRowsLookDisabled();
    void checkRectIsWhereTheBoxIs();
    void fileNamesOnly_data();
    void fileNamesOnly();
    void renamesInPlace();
    void escapeIsReportedAndCloses();
    void homeStaysInFront();
    void mixedItemsThrow();
};

void KovaTreeWidgetTest::rightPressIsReportedAndSelects()
{
    Fixture f(threeNames());
    f.show();
    QList<QPair<Qt::MouseButton, QPoint>> presses;
    QTreeWidgetItem *currentAtSignal = nullptr;
    connect(&f.tree, &KovaTreeWidget::sigMouseRightClickEvent, &f.tree, [&](QMouseEvent *event) {
        presses.append({event->button(), event->pos()});
        currentAtSignal = f.tree.currentItem();
    });
    QTest::mouseClick(f.tree.windowHandle(), Qt::LeftButton, {}, f.center(1));
    QCOMPARE(f.tree.currentItem(), f.item(1));
    QVERIFY(presses.isEmpty());

    QTest::mouseClick(f.tree.windowHandle(), Qt::RightButton, {}, f.center(2));
    QCOMPARE(presses.size(), 1);
    QCOMPARE(presses[0].first, Qt::RightButton);
    QCOMPARE(f.tree.itemAt(presses[0].second), f.item(2));
    QCOMPARE(currentAtSignal, f.item(1));
    QCOMPARE(f.tree.currentItem(), f.item(2));
    QVERIFY(f.item(2)->isSelected());
}

void KovaTreeWidgetTest::everyKeyIsReported()
{
    Fixture f(threeNames());
    f.show();
    f.tree.setCurrentItem(f.item(0));
    QList<int> keys;
    connect(&f.tree, &KovaTreeWidget::sigKeyPressEvent, &f.tree,
            [&keys](QKeyEvent *event) { keys.append(event->key()); });
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_F9, Qt::Key_Delete})
        QTest::keyClick(f.tree.windowHandle(), key);
    QCOMPARE(keys, (QList<int>{Qt::Key_Down, Qt::Key_F9, Qt::Key_Delete}));
    QCOMPARE(f.tree.currentItem(), f.item(1));
}

void KovaTreeWidgetTest::focusAnnouncesARow()
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *field = new QLineEdit;
    auto *tree = new KovaTreeWidget(nullptr);
    tree->setHeaderHidden(true);
    layout->addWidget(field);
    layout->addWidget(tree);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto tabIntoTree = [&] {
        field->setFocus();
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
        QVERIFY(tree->hasFocus());
    };

    tabIntoTree();
    QVERIFY(!tree->currentItem());

    QTreeWidgetItem *const first = new QTreeWidgetItem(tree, threeNames());
    new QTreeWidgetItem(tree, threeNames());
    tabIntoTree();
    QCOMPARE(tree->currentItem(), first);

    QList<QTreeWidgetItem *> announced;
    connect(tree, &QTreeWidget::currentItemChanged, tree,
            [&announced](QTreeWidgetItem *current) { announced.append(current); });
    tabIntoTree();
    QCOMPARE(announced, (QList<QTreeWidgetItem *>{nullptr, first}));
}

void KovaTreeWidgetTest::scrollsSidewaysToTheItem()
{
    Fixture f(threeNames());
    f.tree.setRootIsDecorated(false);
    f.show();
    const int width = f.tree.viewport()->width();
    f.widen(4 * width);
    QScrollBar *bar = f.tree.horizontalScrollBar();
    // The left edge of an item in the viewport is its indentation less what is scrolled.
    const auto scrollFrom = [&](int left) {
        f.tree.setRootIsDecorated(true);
        f.tree.setIndentation(left + width);
        bar->setValue(width);
        if (f.tree.visualItemRect(f.item(0)).left() != left)
            qFatal("the item is not where the test wants it");
        f.tree.updateScrollArea(f.item(0));
        return bar->value();
    };
    QCOMPARE(scrollFrom(0), width);
    QCOMPARE(scrollFrom(width - kovaPx(100)), width);
    const int tooFar = width - kovaPx(100) + 1;
    QCOMPARE(scrollFrom(tooFar), tooFar + width - width / 2);
    QCOMPARE(f.tree.visualItemRect(f.item(0)).left(), width / 2);
    QCOMPARE(scrollFrom(-5), width - 5 - width / 2);
    f.tree.updateScrollArea(nullptr);
}

void KovaTreeWidgetTest::scrollsSidewaysRightToLeft()
{
    Fixture f(threeNames());
    f.tree.setLayoutDirection(Qt::RightToLeft);
    f.show();
    const int width = f.tree.viewport()->width();
    f.widen(4 * width);
    f.tree.setIndentation(2 * width);
    QVERIFY(f.tree.visualItemRect(f.item(0)).right() < 0);
    f.tree.updateScrollArea(f.item(0));
    QCOMPARE(f.tree.visualItemRect(f.item(0)).right(), width - 1 - width / 2);
}

void KovaTreeWidgetTest::highlightFillsTheRow_data()
{
    QTest::addColumn<bool>("rightToLeft");
    QTest::addColumn<int>("scrolled");
    QTest::newRow("at rest") << false << 0;
    QTest::newRow("scrolled sideways") << false << 37;
    QTest::newRow("right to left") << true << 0;
    QTest::newRow("right to left, scrolled") << true << 37;
}

void KovaTreeWidgetTest::highlightFillsTheRow()
{
    QFETCH(bool, rightToLeft);
    QFETCH(int, scrolled);
    Fixture f({QString(), QString(), QString()});
    f.tree.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    f.tree.setFocusPolicy(Qt::NoFocus);
    f.show();
    f.widen(kovaPx(900));
    f.tree.horizontalScrollBar()->setValue(scrolled);
    f.item(1)->setSelected(true);

    const QImage picture = f.tree.viewport()->grab().toImage();
    const int height = kovaPx(28);
    const int fullWidth = f.tree.viewport()->width();
    const int width = int(fullWidth - 3 * DPIinfo::getInstance()->getDPI());
    const int middle = height + height / 2;
    const auto colorAt = [&](int x, int y) {
        return picture.pixelColor(rightToLeft ? fullWidth - 1 - x : x, y);
    };
    for (int x = 1; x < width - 1; ++x)
        QCOMPARE(colorAt(x, middle), selectedColor);
    for (int x = width + 1; x < fullWidth; ++x)
        QCOMPARE(colorAt(x, middle), QColor(Qt::white));
    for (const int y : {height + 1, 2 * height - 2})
        QCOMPARE(colorAt(fullWidth / 2, y), selectedColor);
    // Round corners, and nothing on the neighbours.
    QVERIFY(colorAt(1, height + 1) != selectedColor);
    for (const int y : {height - 1, 2 * height})
        QCOMPARE(colorAt(fullWidth / 2, y), QColor(Qt::white));
}

void KovaTreeWidgetTest::highlightNeedsNoColours()
{
    Fixture f({QString(), QString()});
    f.tree.setBackgroundColor(QColor(), QColor());
    f.show();
    f.item(0)->setSelected(true);
    const QImage picture = f.tree.viewport()->grab().toImage();
    QCOMPARE(picture.pixelColor(kovaPx(100), kovaPx(14)), QColor(Qt::black));
    QCOMPARE(picture.pixelColor(kovaPx(100), kovaPx(42)), QColor(Qt::white));
}

void KovaTreeWidgetTest::rowsHaveTheHouseHeight()
{
    Fixture f({QStringLiteral("one line"), QStringLiteral("two\nlines")});
    f.show();
    for (int row = 0; row < 2; ++row)
        QCOMPARE(f.tree.visualItemRect(f.item(row)).height(), kovaPx(28));
    const QModelIndex index = f.tree.model()->index(0, 0);
    QStyleOptionViewItem option;
    option.font = f.tree.font();
    QCOMPARE(f.delegate.sizeHint(option, index).width(),
             QItemDelegate().sizeHint(option, index).width());
}

void KovaTreeWidgetTest::uncheckableRowsLookDisabled()
{
    Fixture f({QStringLiteral("IIIIII"), QStringLiteral("IIIIII")});
    f.tree.setStyleSheet(QString());
    f.tree.setFocusPolicy(Qt::NoFocus);
    QPalette palette = f.tree.palette();
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::green);
    f.tree.setPalette(palette);
    f.item(1)->setFlags(f.item(1)->flags() & ~Qt::ItemIsUserCheckable);
    f.show();
    const QImage picture = f.tree.viewport()->grab().toImage();
    const auto count = [&](int row, const QColor &color) {
        const QRect rect = f.tree.visualItemRect(f.item(row));
        int pixels = 0;
        for (int x = rect.left(); x <= rect.right(); ++x) {
            for (int y = rect.top(); y <= rect.bottom(); ++y)
                pixels += picture.pixelColor(x, y) == color ? 1 : 0;
        }
        return pixels;
    };
    QVERIFY(count(0, Qt::black) > 20);
    QCOMPARE(count(0, Qt::green), 0);
    QVERIFY(count(1, Qt::green) > 20);
    QCOMPARE(count(1, Qt::black), 0);
}

void KovaTreeWidgetTest::checkRectIsWhereTheBoxIs()
{
    Fixture f({QStringLiteral("Alpha")});
    f.item(0)->setCheckState(0, Qt::Unchecked);
    f.show();
    for (const bool rightToLeft : {false, true}) {
        f.tree.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        f.tree.viewport()->grab();
        QVERIFY(f.tree.visualItemRect(f.item(0)).contains(g_check_rect));
        QVERIFY(qAbs(g_check_rect.center().y() - kovaPx(14)) <= 1);
        const Qt::CheckState before = f.item(0)->checkState(0);
        QTest::mouseClick(f.tree.windowHandle(), Qt::LeftButton, {},
                          f.tree.viewport()->mapTo(&f.tree, g_check_rect.center()));
        QVERIFY(f.item(0)->checkState(0) != before);
    }
}

void KovaTreeWidgetTest::fileNamesOnly_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    const auto row = [](const char *typed, const char *taken) {
        QTest::newRow(typed) << QString::fromUtf8(typed) << QString::fromUtf8(taken);
    };
    row("notes 2024.txt", "notes 2024.txt");
    row(".hidden", "hidden");
    row("a.b.", "a.b.");
    row("a/b\\c:d", "abcd");
    row("what? <*> \"now\"|", "what  now");
    row("(new) [copy] $1", "(new) [copy] $1");
}

void KovaTreeWidgetTest::fileNamesOnly()
{
    QFETCH(QString, typed);
    Fixture f(threeNames());
    f.show();
    QLineEdit *edit = f.openEditor(0);
    QVERIFY(edit);
    QCOMPARE(edit->selectedText(), QStringLiteral("Alpha"));
    for (const QChar &letter : typed)
        QTest::keyClick(f.tree.windowHandle(), letter.toLatin1());
    QTEST(edit->text(), "taken");
}

void KovaTreeWidgetTest::renamesInPlace()
{
    Fixture f(threeNames());
    f.show();
    QPointer<QLineEdit> edit = f.openEditor(1);
    QCOMPARE(edit->styleSheet(), getStyleSheet("component.tree_item", false));
    QTest::keyClicks(edit, QStringLiteral("Delta"));
    QTest::keyClick(f.tree.windowHandle(), Qt::Key_Return);
    QTRY_VERIFY(!edit);
    QCOMPARE(f.item(1)->text(0), QStringLiteral("Delta"));

    // Nothing is no name.
    edit = f.openEditor(1);
    QTest::keyClick(f.tree.windowHandle(), Qt::Key_Delete);
    QTest::keyClick(f.tree.windowHandle(), Qt::Key_Return);
    QVERIFY(edit && edit->isVisible());
    QCOMPARE(f.item(1)->text(0), QStringLiteral("Delta"));

    // A change from outside reaches the open field.
    f.item(1)->setText(0, QStringLiteral("Epsilon"));
    QCOMPARE(edit->text(), QStringLiteral("Epsilon"));
    QCOMPARE(edit->findChildren<QValidator *>().size(), 1);
}

void KovaTreeWidgetTest::escapeIsReportedAndCloses()
{
    Fixture f(threeNames());
    f.show();
    QList<int> keys;
    connect(&f.delegate, &ItemDelegate::sigKeyPressed, &f.tree,
            [&keys](QKeyEvent *event) { keys.append(event->key()); });
    const QPointer<QLineEdit> edit = f.openEditor(0);
    QTest::keyClicks(edit, QStringLiteral("x"));
    QTest::keyClick(f.tree.windowHandle(), Qt::Key_Escape);
    QCOMPARE(keys, QList<int>{Qt::Key_Escape});
    QTRY_VERIFY(!edit);
    QCOMPARE(f.item(0)->text(0), QStringLiteral("Alpha"));
}

void KovaTreeWidgetTest::homeStaysInFront()
{
    Fixture f({});
    f.add(QStringLiteral("Home"), QStringLiteral("home"));
    for (const char *name : {"Music", "Archive", "Zoo", "Books"})
        f.add(QString::fromLatin1(name));
    f.tree.sortItems(0, Qt::AscendingOrder);
    QCOMPARE(f.names().join(u' '), QStringLiteral("Home Archive Books Music Zoo"));
    f.tree.sortItems(0, Qt::AscendingOrder);
    QCOMPARE(f.names().join(u' '), QStringLiteral("Home Archive Books Music Zoo"));

    FileSystemTreeWidgetItem home;
    home.setText(0, QStringLiteral("Home"));
    home.tag = QStringLiteral("home");
    FileSystemTreeWidgetItem before;
    before.setText(0, QStringLiteral("Archive"));
    FileSystemTreeWidgetItem after;
    after.setText(0, QStringLiteral("Zoo"));
    QVERIFY(!(before < home) && !(after < home) && !(home < home));
    QVERIFY(home < after);
    QVERIFY(!(home < before));
    QVERIFY(before < after);
    home.tag = QStringLiteral("Home");
    QVERIFY(before < home);

    f.tree.sortItems(0, Qt::DescendingOrder);
    QCOMPARE(f.names().join(u' '), QStringLiteral("Zoo Music Home Books Archive"));
}

void KovaTreeWidgetTest::mixedItemsThrow()
{
    const FileSystemTreeWidgetItem item;
    const QTreeWidgetItem other;
    QVERIFY_EXCEPTION_THROWN((void)(item < other), std::bad_cast);
}

QTEST_MAIN(KovaTreeWidgetTest)
#include "kova-tree-widget-test.moc"
