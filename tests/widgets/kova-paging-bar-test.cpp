#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <QtTest>
#include <QtWidgets>

#include <limits>

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

int xOf(const QWidget *widget)
{
    return widget->mapToGlobal(QPoint()).x();
}

// The controls from left to right.
enum Control { First, Back, Page, Current = Page + 2, Forward = Page + 5, Last, Refresh };

// A bar that is shown over a model of 10 rows per page.
struct Fixture
{
    explicit Fixture(int itemCount = 0, int page = 1)
        : changes(&bar, &KovaPagingBar::sigPageChanged)
    {
        if (itemCount > 0)
            look(itemCount, page);
        bar.resize(kovaPx(700), kovaPx(29));
        showActive(&bar);
        std::sort(controls.begin(), controls.end(),
                  [](QWidget *left, QWidget *right) { return xOf(left) < xOf(right); });
    }

    // The arrows' names and the numbers that can be clicked, "-" for what is disabled.
    [[nodiscard]] QString look() const
    {
        QStringList parts;
        for (const QAbstractButton *control : controls.mid(First, Refresh)) {
            const bool isArrow = control->text().isEmpty();
            const QString text = isArrow ? control->toolTip().left(1) : control->text().trimmed();
            parts.append(control->isEnabled() ? text : "-" + (isArrow ? QString() : text));
        }
        return parts.join(" ");
    }

    QString look(int itemCount, int page)
    {
        model.setItemCount(itemCount);
        bar.setPage(page);
        return look();
    }

    // The page that a click leads to.
    int clickOn(int control)
    {
        click(controls[control]);
        return model.nowPage();
    }

    [[nodiscard]] QString readOut(QAccessible::Text kind) const
    {
        QStringList texts;
        for (QWidget *control : controls)
            texts.append(spoken(control, kind));
        return texts.join("|");
    }

    [[nodiscard]] QList<QLabel *> shownLabels() const
    {
        QCoreApplication::sendPostedEvents();
        QList<QLabel *> labels;
        for (QLabel *label : bar.findChildren<QLabel *>()) {
            if (label->isVisible())
                labels.append(label);
        }
        return labels;
    }

    KovaPagingModel model{10, nullptr};
    KovaPagingBar bar{&model, nullptr};
    QSignalSpy changes;
    QList<QAbstractButton *> controls = bar.findChildren<QAbstractButton *>();
};

} // namespace

class KovaPagingBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void modelDividesIntoPages();
    void showsTheNumbersAroundThePage();
    void clicksTurnPages();
    void footerLabelsComeAndGo();
    void firstFooterStyleDependsOnTheRefreshButton();
    void keyboardReachesEveryControl();
    void screenReaderKnowsThePages();
};

void KovaPagingBarTest::modelDividesIntoPages()
{
    const auto pageCount = [](int rows, int items) {
        KovaPagingModel model(rows);
        model.setItemCount(items);
        return model.pageCount();
    };
    QCOMPARE(pageCount(10, 0), 1);
    QCOMPARE(pageCount(10, 20), 2);
    QCOMPARE(pageCount(10, 25), 3);
    QCOMPARE(pageCount(10, -25), 1);
    QCOMPARE(pageCount(2, largest), 1073741824);
    QCOMPARE(pageCount(0, 25), 1);
    QCOMPARE(pageCount(-1, smallest), 1);

    const auto startItem = [](int rows, int page) {
        KovaPagingModel model(rows);
        model.setNowPage(page);
        return model.startItem();
    };
    QCOMPARE(startItem(25, 3), 50);
    QCOMPARE(startItem(25, largest), largest);
    QCOMPARE(startItem(25, smallest), smallest);
}

void KovaPagingBarTest::showsTheNumbersAroundThePage()
{
    Fixture f;
    QCOMPARE(f.look(), "F P   1   N L"); // the other numbers come with the first page
    QCOMPARE(f.look(0, 1), "- - - - 1 - - - -");
    QCOMPARE(f.controls[Page]->text(), " ");
    QCOMPARE(f.look(25, 1), "- - - - 1 2 3 N L");
    QCOMPARE(f.look(35, 4), "F P 2 3 4 - - - -");
    QCOMPARE(f.look(500, 20), "F P 18 19 20 21 22 N L");
    QCOMPARE(f.look(35, 0), "F P - - - 1 2 N L");
    // A list that shrinks leaves the page where it is.
    f.look(100, 9);
    f.bar.setItemCount(65);
    QCOMPARE(f.look(), "F P 7 - - - - - -");
    QCOMPARE(f.model.nowPage(), 9);
    QCOMPARE(f.changes.count(), 0);
    // A new bar turns its model back.
    const KovaPagingBar other(&f.model);
    QCOMPARE(f.model.nowPage(), 1);
    QCOMPARE(f.model.itemCount(), 0);

    // The largest numbers do no harm.
    f.model.setRowLimit(1);
    QCOMPARE(f.look(largest, smallest), "F P - - - - - N L");
    f.look(largest, largest);
    f.bar.next_5_page();
    QCOMPARE(f.look(), "F P 2147483645 2147483646 2147483647 - - - -");
}

void KovaPagingBarTest::clicksTurnPages()
{
    Fixture f(500, 20);
    QSignalSpy refreshes(&f.bar, &KovaPagingBar::sigRefresh);
    QCOMPARE(f.clickOn(Page + 4), 22);
    QCOMPARE(f.look(), "F P 20 21 22 23 24 N L");
    QCOMPARE(f.clickOn(Page), 20);
    QCOMPARE(f.clickOn(Current), 20);
    QCOMPARE(f.clickOn(Back), 15);
    QCOMPARE(f.clickOn(Forward), 20);
    QCOMPARE(f.clickOn(Last), 50);
    QCOMPARE(f.clickOn(First), 1);
    QCOMPARE(f.changes.count(), 7);
    QCOMPARE(f.clickOn(Refresh), 1);
    QCOMPARE(refreshes.count(), 1);
    // What is disabled does nothing, nor does an index that no button has.
    f.clickOn(Page);
    f.bar.pageClick(5);
    f.bar.pageClick(-1);
    QCOMPARE(f.changes.count(), 7);

    // Jumps stop at the ends.
    f.look(35, 2);
    QCOMPARE(f.clickOn(Forward), 4);
    f.bar.setPage(3);
    QCOMPARE(f.clickOn(Back), 1);
    f.bar.prev_5_page();
    f.bar.reset();
    QCOMPARE(f.model.nowPage(), 1);
    QCOMPARE(f.changes.count(), 11);
}

void KovaPagingBarTest::footerLabelsComeAndGo()
{
    Fixture f(100);
    f.bar.setFooterInfos({{"100 rows", 0}, {"2 marked", 120}});
    const QList<QLabel *> labels = f.shownLabels();
    QCOMPARE(labels.size(), 2);
    // The first is beside the refresh button.
    QVERIFY(xOf(labels[1]) < xOf(labels[0]));
    QVERIFY(xOf(labels[0]) < xOf(f.controls[Refresh]));
    QCOMPARE(labels[1]->width(), kovaPx(120));

    f.bar.setFooterText(QString());
    QCOMPARE(f.shownLabels(), QList<QLabel *>{labels[0]});
    QCOMPARE(labels[0]->text(), QString());
    f.bar.setFooterInfos({{"a", 90}, {"b", 0}});
    QCOMPARE(f.shownLabels().size(), 2);
    QCOMPARE(labels[0]->width(), kovaPx(90));
    // A label that went is not taken up again, nor is it deleted.
    QCOMPARE(f.bar.findChildren<QLabel *>().size(), 3);
}

void KovaPagingBarTest::firstFooterStyleDependsOnTheRefreshButton()
{
    const QString inner = getStyleSheet("component.paging_bar_label", false);
    const QString rightmost = getStyleSheet("component.paging_bar_rightmost_label", false);
    for (const bool hidden : {true, false}) {
        Fixture f;
        f.bar.setRefreshButtonHidden(hidden);
        f.bar.setFooterInfos({{"a", 0}, {"b", 0}});
        f.bar.setRefreshButtonHidden(!hidden); // too late for the labels that exist
        QCOMPARE(f.shownLabels()[0]->styleSheet(), hidden ? rightmost : inner);
        QCOMPARE(f.shownLabels()[1]->styleSheet(), inner);
    }
}

void KovaPagingBarTest::keyboardReachesEveryControl()
{
    const Fixture f(50, 3);
    f.controls[First]->setFocus();
    for (int i = Back; i <= Refresh + 1; ++i) {
        press(&f.bar, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), f.controls[i % f.controls.size()]);
    }
    f.controls[Page + 3]->setFocus();
    press(&f.bar, Qt::Key_Space);
    QCOMPARE(f.model.nowPage(), 4);
    // A button that is disabled under the user's fingers leaves the focus in the bar.
    f.controls[Last]->setFocus();
    press(&f.bar, Qt::Key_Space);
    QCOMPARE(f.model.nowPage(), 5);
    QCOMPARE(QApplication::focusWidget(), f.controls[Current]);
}

void KovaPagingBarTest::screenReaderKnowsThePages()
{
    const Fixture f(40, 3);
    QCOMPARE(f.readOut(QAccessible::Name), "First page|Previous 5 pages|Page 1|Page 2|Page 3|"
                                           "Page 4| |Next 5 pages|Last page|Refresh");
    QVERIFY(f.readOut(QAccessible::Description).contains("|Current page, 3 of 4|"));
    QCOMPARE(f.readOut(QAccessible::Description).count("Current page"), 1);

    // A host may do without the texts for it.
    QMap<QString, QString> strings;
    for (const char *key :
         {"first_page", "prev_5_pages", "last_page", "next_5_pages", "pagebar_refresh"})
        strings.insert(key, QString());
    ComponentStrings::getInstance()->installStrings(strings);
    WarningCatcher warnings;
    const Fixture bare(40, 3);
    QCOMPARE(warnings.take(), QStringList());
    QVERIFY(bare.readOut(QAccessible::Name).contains("|1|2|3|4|"));
    QVERIFY(bare.readOut(QAccessible::Description).contains("|3 / 4|"));
}

QTEST_MAIN(KovaPagingBarTest)
#include "kova-paging-bar-test.moc"
