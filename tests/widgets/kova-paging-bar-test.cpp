#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QAccessible>
#include <QtTest>

#include <limits>
#include <memory>

namespace {

constexpr int largest = std::numeric_limits<int>::max();

// A bar over a model of 10 rows per page, and its controls from left to right.
struct Fixture
{
    explicit Fixture(int itemCount = 0, int page = 1)
        : changes(&bar, &KovaPagingBar::sigPageChanged)
    {
        for (KovaButton *button : bar.findChildren<KovaButton *>())
            pages.append(button);
        std::sort(pages.begin(), pages.end(),
                  [](QWidget *left, QWidget *right) { return left->x() < right->x(); });
        for (KovaIconButton *button : bar.findChildren<KovaIconButton *>()) {
            const QString name = button->accessibleName();
            icons.insert(name, button);
        }
        if (itemCount > 0) {
            model.setItemCount(itemCount);
            bar.setPage(page);
        }
    }

    [[nodiscard]] QStringList texts() const
    {
        QStringList list;
        for (const QAbstractButton *button : pages)
            list.append(button->text());
        return list;
    }

    // The accessible names of what is enabled: first, back, forward and last.
    [[nodiscard]] QStringList enabledArrows() const
    {
        QStringList list;
        for (const char *name : {"First page", "Previous 5 pages", "Next 5 pages", "Last page"}) {
            if (icons.value(QString::fromLatin1(name))->isEnabled())
                list.append(QString::fromLatin1(name));
        }
        return list;
    }

    [[nodiscard]] QList<QLabel *> shownLabels() const
    {
        QList<QLabel *> labels;
        for (QLabel *label : bar.findChildren<QLabel *>()) {
            if (!label->isHidden())
                labels.append(label);
        }
        return labels;
    }

    void show()
    {
        bar.resize(kovaPx(700), kovaPx(29));
        bar.show();
        QVERIFY(QTest::qWaitForWindowActive(&bar));
    }

    void click(QWidget *control)
    {
        QTest::mouseClick(bar.windowHandle(), Qt::LeftButton, {},
                          control->mapTo(&bar, control->rect().center()));
    }

    KovaPagingModel model{10, nullptr};
    KovaPagingBar bar{&model, nullptr};
    QSignalSpy changes;
    QList<QAbstractButton *> pages;
    QMap<QString, KovaIconButton *> icons;
};

const QStringList allArrows{QStringLiteral("First page"), QStringLiteral("Previous 5 pages"),
                            QStringLiteral("Next 5 pages"), QStringLiteral("Last page")};
const QString blank = QStringLiteral(" ");

} // namespace

class KovaPagingBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void pageCountCoversAllItems_data();
    void pageCountCoversAllItems();
    void startItemStaysInRange();
    void startsAtPageOneBeforeAnyIsSet();
    void numbersAroundTheCurrentPage_data();
    void numbersAroundTheCurrentPage();
    void clicksTurnPages();
    void jumpsStopAtTheEnds();
    void largestNumbersDoNoHarm();
    void shrinkingKeepsThePage();
    void footerLabelsComeAndGo();
    void firstFooterStyleDependsOnTheRefreshButton();
    void sizesFollowTheScale();
    void keyboardReachesEveryControl();
    void focusStaysInTheBar();
    void screenReaderKnowsThePages();
    void worksWithoutTheOptionalStrings();
};

void KovaPagingBarTest::pageCountCoversAllItems_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("items");
    QTest::addColumn<int>("pages");
    QTest::newRow("none") << 10 << 0 << 1;
    QTest::newRow("rest") << 10 << 25 << 3;
    QTest::newRow("no rest") << 10 << 20 << 2;
    QTest::newRow("negative items") << 10 << -25 << 1;
    QTest::newRow("one per page") << 1 << largest << largest;
    QTest::newRow("two per page") << 2 << largest << 1073741824;
    QTest::newRow("largest limit") << largest << largest << 1;
    QTest::newRow("no limit") << 0 << 25 << 1;
    QTest::newRow("negative limit") << -1 << std::numeric_limits<int>::min() << 1;
}

void KovaPagingBarTest::pageCountCoversAllItems()
{
    QFETCH(int, rows);
    QFETCH(int, items);
    KovaPagingModel model(rows, nullptr);
    QCOMPARE(model.nowPage(), 1);
    QCOMPARE(model.itemCount(), 0);
    model.setItemCount(items);
    QTEST(model.pageCount(), "pages");
    QCOMPARE(model.startItem(), 0);
}

void KovaPagingBarTest::startItemStaysInRange()
{
    KovaPagingModel model(25, nullptr);
    model.setNowPage(3);
    QCOMPARE(model.startItem(), 50);
    model.setNowPage(largest);
    QCOMPARE(model.startItem(), largest);
    model.setNowPage(std::numeric_limits<int>::min());
    QCOMPARE(model.startItem(), std::numeric_limits<int>::min());
    model.setRowLimit(1);
    model.setNowPage(largest);
    QCOMPARE(model.startItem(), largest - 1);
}

void KovaPagingBarTest::startsAtPageOneBeforeAnyIsSet()
{
    WarningCatcher warnings;
    KovaPagingModel model(10, nullptr);
    model.setNowPage(7);
    model.setItemCount(300);
    const KovaPagingBar bar(&model, nullptr);
    QCOMPARE(warnings.take(), QStringList());
    QCOMPARE(model.nowPage(), 1);
    QCOMPARE(model.itemCount(), 0);
    QCOMPARE(Fixture().texts(),
             (QStringList{QString(), QString(), QStringLiteral("1"), QString(), QString()}));
}

void KovaPagingBarTest::numbersAroundTheCurrentPage_data()
{
    QTest::addColumn<int>("items");
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("arrows");
    const QStringList back{allArrows[0], allArrows[1]};
    const QStringList forward{allArrows[2], allArrows[3]};
    const auto numbers = [](const char *text) { return QString::fromLatin1(text).split(u','); };
    QTest::newRow("nothing") << 0 << 1 << numbers(" , ,1, , ") << QStringList();
    QTest::newRow("first of three") << 25 << 1 << numbers(" , ,1,2,3") << forward;
    QTest::newRow("last of four") << 35 << 4 << numbers("2,3,4, , ") << back;
    QTest::newRow("middle") << 500 << 20 << numbers("18,19,20,21,22") << allArrows;
    QTest::newRow("behind the last") << 35 << 5 << numbers("3,4, , , ") << back;
    QTest::newRow("before the first") << 35 << 0 << numbers(" , , ,1,2") << allArrows;
}

void KovaPagingBarTest::numbersAroundTheCurrentPage()
{
    QFETCH(int, items);
    QFETCH(int, page);
    Fixture f;
    f.model.setItemCount(items);
    f.bar.setPage(page);
    QTEST(f.texts(), "texts");
    QTEST(f.enabledArrows(), "arrows");
    for (const QAbstractButton *button : f.pages)
        QCOMPARE(button->isEnabled(), button->text() != blank);
    QCOMPARE(f.model.nowPage(), page);
    QCOMPARE(f.changes.count(), 0);
}

void KovaPagingBarTest::clicksTurnPages()
{
    Fixture f(500, 20);
    QSignalSpy refreshes(&f.bar, &KovaPagingBar::sigRefresh);
    f.show();
    const auto clickThenPage = [&f](QWidget *control) {
        f.click(control);
        return f.model.nowPage();
    };
    QCOMPARE(clickThenPage(f.pages[4]), 22);
    QCOMPARE(f.texts().constFirst(), QStringLiteral("20"));
    QCOMPARE(clickThenPage(f.pages[0]), 20);
    QCOMPARE(clickThenPage(f.pages[2]), 20);
    QCOMPARE(clickThenPage(f.icons[allArrows[1]]), 15);
    QCOMPARE(clickThenPage(f.icons[allArrows[2]]), 20);
    QCOMPARE(clickThenPage(f.icons[allArrows[3]]), 50);
    QCOMPARE(clickThenPage(f.icons[allArrows[0]]), 1);
    QCOMPARE(f.changes.count(), 7);
    QCOMPARE(clickThenPage(f.pages[0]), 1);
    QCOMPARE(f.changes.count(), 7);

    f.click(f.icons[QStringLiteral("Refresh")]);
    QCOMPARE(refreshes.count(), 1);
    QCOMPARE(f.changes.count(), 7);
    f.bar.pageClick(5);
    f.bar.pageClick(-1);
    QCOMPARE(f.changes.count(), 7);
}

void KovaPagingBarTest::jumpsStopAtTheEnds()
{
    Fixture f(35, 2);
    f.bar.next_5_page();
    QCOMPARE(f.model.nowPage(), 4);
    f.bar.setPage(3);
    QCOMPARE(f.changes.count(), 1);
    f.bar.prev_5_page();
    QCOMPARE(f.model.nowPage(), 1);
    f.bar.prev_5_page();
    f.bar.last_page();
    QCOMPARE(f.model.nowPage(), 4);
    f.bar.reset();
    QCOMPARE(f.model.nowPage(), 1);
    QCOMPARE(f.changes.count(), 5);
}

void KovaPagingBarTest::largestNumbersDoNoHarm()
{
    Fixture f;
    f.model.setRowLimit(1);
    f.bar.setItemCount(largest);
    f.bar.last_page();
    QCOMPARE(f.texts(), (QStringList{QStringLiteral("2147483645"), QStringLiteral("2147483646"),
                                     QStringLiteral("2147483647"), blank, blank}));
    f.bar.next_5_page();
    QCOMPARE(f.model.nowPage(), largest);
    f.bar.setPage(std::numeric_limits<int>::min());
    QCOMPARE(f.texts(), QStringList({blank, blank, blank, blank, blank}));
    f.bar.prev_5_page();
    QCOMPARE(f.model.nowPage(), 1);
    f.model.setRowLimit(0);
    f.bar.last_page();
    QCOMPARE(f.texts(), QStringList({blank, blank, QStringLiteral("1"), blank, blank}));
}

void KovaPagingBarTest::shrinkingKeepsThePage()
{
    Fixture f(100, 9);
    f.bar.setItemCount(65);
    QCOMPARE(f.model.nowPage(), 9);
    QCOMPARE(f.texts(), QStringList({QStringLiteral("7"), blank, blank, blank, blank}));
    QCOMPARE(f.enabledArrows(), QStringList({allArrows[0], allArrows[1]}));
    QCOMPARE(f.changes.count(), 0);
}

void KovaPagingBarTest::footerLabelsComeAndGo()
{
    Fixture f(100, 1);
    f.show();
    f.bar.setFooterInfos({{QStringLiteral("100 rows"), 0}, {QStringLiteral("2 marked"), 120}});
    QTRY_COMPARE(f.shownLabels().size(), 2);
    QList<QLabel *> labels = f.shownLabels();
    const auto xInBar = [&f](const QWidget *widget) { return widget->mapTo(&f.bar, {}).x(); };
    // The refresh button is at the far right, the first label beside it.
    QTRY_VERIFY(xInBar(labels[1]) < xInBar(labels[0]));
    QVERIFY(xInBar(labels[0]) < xInBar(f.icons[QStringLiteral("Refresh")]));
    QCOMPARE(labels[1]->width(), kovaPx(120));
    QCOMPARE(labels[0]->height(), kovaPx(19));

    QLabel *const first = labels[0];
    f.bar.setFooterText(QString());
    QCOMPARE(f.shownLabels(), QList<QLabel *>{first});
    QCOMPARE(first->text(), QString());
    f.bar.setFooterInfos({{QStringLiteral("a"), 90}, {QStringLiteral("b"), 0}});
    QTRY_COMPARE(f.shownLabels().size(), 2);
    QCOMPARE(first->width(), kovaPx(90));
    // A label that went is not taken up again, nor is it deleted.
    QCOMPARE(f.bar.findChildren<QLabel *>().size(), 3);
}

void KovaPagingBarTest::firstFooterStyleDependsOnTheRefreshButton()
{
    Fixture f;
    f.bar.setRefreshButtonHidden(true);
    f.bar.setFooterInfos({{QStringLiteral("a"), 0}, {QStringLiteral("b"), 0}});
    const QString rightmost = getStyleSheet("component.paging_bar_rightmost_label", false);
    const QString inner = getStyleSheet("component.paging_bar_label", false);
    QCOMPARE(f.shownLabels()[0]->styleSheet(), rightmost);
    QCOMPARE(f.shownLabels()[1]->styleSheet(), inner);
    f.bar.setRefreshButtonHidden(false);
    QCOMPARE(f.shownLabels()[0]->styleSheet(), rightmost);

    Fixture withButton;
    withButton.bar.setFooterText(QStringLiteral("a"));
    QCOMPARE(withButton.shownLabels()[0]->styleSheet(), inner);
}

void KovaPagingBarTest::sizesFollowTheScale()
{
    Fixture f(500, 20);
    f.show();
    QCOMPARE(f.bar.sizeHint().height(), kovaPx(29));
    for (const QAbstractButton *button : f.pages) {
        QCOMPARE(button->height(), kovaPx(27));
        QVERIFY(button->width() >= kovaPx(28));
    }
    QCOMPARE(f.icons[QStringLiteral("Refresh")]->size(), QSize(kovaPx(24), kovaPx(24)));
    QCOMPARE(f.icons[allArrows[0]]->mapTo(&f.bar, {}).x(), kovaPx(50));
    const int gap = f.pages[1]->x() - f.pages[0]->geometry().right() - 1;
    QCOMPARE(gap, kovaPx(4));
    QVERIFY(f.bar.findChild<QWidget *>(QStringLiteral("PAGINGBARBORDER")));
}

void KovaPagingBarTest::keyboardReachesEveryControl()
{
    Fixture f(500, 20);
    f.show();
    QWindow *window = f.bar.windowHandle();
    QList<QWidget *> visited;
    for (int i = 0; i < 10; ++i) {
        QTest::keyClick(window, Qt::Key_Tab);
        visited.append(QApplication::focusWidget());
    }
    const auto isLeft = [&f](const QWidget *a, const QWidget *b) {
        return a->mapTo(&f.bar, {}).x() < b->mapTo(&f.bar, {}).x();
    };
    // Wherever it began, it went round once, from left to right.
    const auto leftmost = std::min_element(visited.begin(), visited.end(), isLeft);
    std::rotate(visited.begin(), leftmost, visited.end());
    QVERIFY(std::is_sorted(visited.begin(), visited.end(), isLeft));
    QCOMPARE(QSet<QWidget *>(visited.begin(), visited.end()).size(), 10);

    f.pages[3]->setFocus();
    QTest::keyClick(window, Qt::Key_Space);
    QCOMPARE(f.model.nowPage(), 21);
    f.icons[allArrows[2]]->setFocus();
    QTest::keyClick(window, Qt::Key_Space);
    QCOMPARE(f.model.nowPage(), 26);
}

void KovaPagingBarTest::focusStaysInTheBar()
{
    Fixture f(35, 2);
    f.show();
    f.icons[allArrows[3]]->setFocus();
    QTest::keyClick(f.bar.windowHandle(), Qt::Key_Space);
    QCOMPARE(f.model.nowPage(), 4);
    QCOMPARE(QApplication::focusWidget(), f.pages[2]);
}

void KovaPagingBarTest::screenReaderKnowsThePages()
{
    Fixture f(500, 20);
    const auto text = [](QWidget *widget, QAccessible::Text kind) {
        return QAccessible::queryAccessibleInterface(widget)->text(kind);
    };
    QCOMPARE(text(f.pages[0], QAccessible::Name), QStringLiteral("Page 18"));
    QCOMPARE(text(f.pages[2], QAccessible::Name), QStringLiteral("Page 20"));
    QCOMPARE(text(f.pages[2], QAccessible::Description), QStringLiteral("Current page, 20 of 50"));
    for (const int other : {0, 1, 3, 4})
        QCOMPARE(text(f.pages[other], QAccessible::Description), QString());
    for (auto it = f.icons.begin(); it != f.icons.end(); ++it)
        QCOMPARE(text(it.value(), QAccessible::Name), it.key());
    f.bar.last_page();
    QCOMPARE(text(f.pages[2], QAccessible::Description), QStringLiteral("Current page, 50 of 50"));
    QVERIFY(!text(f.pages[4], QAccessible::Name).contains(QLatin1String("Page")));
}

void KovaPagingBarTest::worksWithoutTheOptionalStrings()
{
    QMap<QString, QString> strings;
    for (const char *key :
         {"first_page", "prev_5_pages", "last_page", "next_5_pages", "pagebar_refresh"})
        strings.insert(QString::fromLatin1(key), QString::fromLatin1(key));
    ComponentStrings::getInstance()->installStrings(strings);
    WarningCatcher warnings;
    KovaPagingModel model(10, nullptr);
    KovaPagingBar bar(&model, nullptr);
    bar.setItemCount(40);
    QCOMPARE(warnings.take(), QStringList());
    QStringList names;
    QStringList descriptions;
    for (const KovaButton *button : bar.findChildren<KovaButton *>()) {
        names.append(button->accessibleName());
        descriptions.append(button->accessibleDescription());
    }
    QVERIFY(names.contains(QStringLiteral("3")));
    QVERIFY(descriptions.contains(QStringLiteral("1 / 4")));
}

QTEST_MAIN(KovaPagingBarTest)
#include "kova-paging-bar-test.moc"
