// SPDX-License-Identifier: MIT

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

    // The first letters of the arrows and the numbers of the pages, "-" for what is disabled.
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

    // The pages that clicks lead to, one after the other.
    QList<int> clickOn(std::initializer_list<int> clicked)
    {
        QList<int> pages;
        for (const int control : clicked) {
            click(controls[control]);
            pages.append(model.nowPage());
        }
        return pages;
    }

    KovaPagingModel model{10, nullptr};
    KovaPagingBar bar{&model, nullptr};
    QSignalSpy changes;
    QList<QAbstractButton *> controls = bar.findChildren<QAbstractButton *>();
};

} // namespace

// The model's numbers, and the bar over it: which numbers it shows, what clicks and keys do to the
// page, the labels at its end and what a screen reader tells.
class KovaPagingBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void modelDividesIntoPages();
    void showsTheNumbersAroundThePage();
    void clicksTurnPages();
    void arrowsFollowTheDirection();
    void footerLabelsComeAndGo();
    void keyboardReachesEveryControl();
    void screenReaderKnowsThePages();
};

void KovaPagingBarTest::modelDividesIntoPages()
{
    const auto numbers = [](int rows, int items, int page) {
        KovaPagingModel model(rows);
        model.setItemCount(items);
        model.setNowPage(page);
        return QString("%1 from %2").arg(model.pageCount()).arg(model.startItem());
    };
    QCOMPARE(numbers(10, 20, 1), "2 from 0");
    QCOMPARE(numbers(25, 51, 3), "3 from 50");
    QCOMPARE(numbers(10, -25, 1), "1 from 0");
    QCOMPARE(numbers(2, largest, largest), "1073741824 from 2147483647");
    QCOMPARE(numbers(25, 25, smallest), "1 from 0");
    QCOMPARE(numbers(0, 25, 3), "1 from 0");
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
    QCOMPARE(f.clickOn({Page + 4, Page, Current, Back, Forward, Last, First}),
             (QList<int>{22, 20, 20, 15, 20, 50, 1}));
    QCOMPARE(f.changes.count(), 7);
    // What is disabled does nothing, nor does an index that no button has.
    QCOMPARE(f.clickOn({Refresh, Page}), (QList<int>{1, 1}));
    QCOMPARE(refreshes.count(), 1);
    f.bar.pageClick(5);
    f.bar.pageClick(-1);
    // A press by code clicks a moment later, when its number may be gone.
    f.bar.setPage(20);
    f.controls[Page]->animateClick();
    f.bar.setPage(1);
    QSignalSpy late(f.controls[Page], &QAbstractButton::clicked);
    QTRY_COMPARE(late.count(), 1);
    QCOMPARE(f.model.nowPage(), 1);
    QCOMPARE(f.changes.count(), 7);

    // Jumps stop at the ends.
    f.look(35, 2);
    QCOMPARE(f.clickOn({Forward, Back}), (QList<int>{4, 1}));
    f.bar.prev_5_page();
    QCOMPARE(f.model.nowPage(), 1);
    QCOMPARE(f.changes.count(), 10);
}

void KovaPagingBarTest::arrowsFollowTheDirection()
{
    // On the first page two of them are disabled, and have to look so.
    const auto pictures = [](const Fixture &fixture) {
        QList<QImage> found;
        for (const int arrow : {First, Back, Forward, Last}) {
            const QAbstractButton *button = fixture.controls[arrow];
            found.append(button->icon().pixmap(button->iconSize()).toImage());
        }
        return found;
    };
    for (const int page : {1, 20, 50}) {
        Fixture f(500, page);
        const QList<QImage> before = pictures(f);
        const QList<QImage> plain = pictures(Fixture(500, 51 - page));
        f.bar.setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(pictures(f), (QList<QImage>{plain[3], plain[2], plain[1], plain[0]}));
        f.bar.setLayoutDirection(Qt::LeftToRight);
        QCOMPARE(pictures(f), before);
    }
}

void KovaPagingBarTest::footerLabelsComeAndGo()
{
    const QString inner = getStyleSheet("component.paging_bar_label", false);
    const QString rightmost = getStyleSheet("component.paging_bar_rightmost_label", false);
    for (const bool hidden : {true, false}) {
        Fixture f(100);
        f.bar.setRefreshButtonHidden(hidden);
        f.bar.setFooterInfos({{"100 rows", 0}, {"2 marked", 120}});
        f.bar.setRefreshButtonHidden(false); // too late for the labels that exist
        QCoreApplication::processEvents();
        const QList<QLabel *> labels = f.bar.findChildren<QLabel *>();
        QCOMPARE(labels.size(), 2);
        QCOMPARE(labels[0]->styleSheet(), hidden ? rightmost : inner);
        QCOMPARE(labels[1]->styleSheet(), inner);
        // The first is beside the refresh button.
        QVERIFY(xOf(labels[1]) < xOf(labels[0]) && xOf(labels[0]) < xOf(f.controls[Refresh]));
        QCOMPARE(labels[1]->width(), kovaPx(120));

        f.bar.setFooterInfos({{"a", 90}});
        f.bar.setFooterText(QString()); // leaves the width as it is
        QVERIFY(labels[0]->text().isEmpty() && labels[0]->isVisible() && !labels[1]->isVisible());
        QCOMPARE(labels[0]->width(), kovaPx(90));
        // A label that went is not taken up again, nor is it deleted.
        f.bar.setFooterInfos({{"a", 90}, {"b", 0}});
        QCOMPARE(f.bar.findChildren<QLabel *>().size(), 3);
        QVERIFY(!labels[1]->isVisible());
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
    QCOMPARE(spoken(f.controls[First]), "First page");
    QCOMPARE(spoken(f.controls[Page]), "Page 1");
    QCOMPARE(spoken(f.controls[Page], QAccessible::Description), "");
    QCOMPARE(spoken(f.controls[Current], QAccessible::Description), "Current page, 3 of 4");
    QCOMPARE(spoken(f.controls[Refresh]), "Refresh");

    // A host may do without the texts for pages.
    QMap<QString, QString> strings;
    for (const char *key :
         {"first_page", "prev_5_pages", "last_page", "next_5_pages", "pagebar_refresh"})
        strings.insert(key, QString());
    ComponentStrings::getInstance()->installStrings(strings);
    WarningCatcher warnings;
    const Fixture bare(40, 3);
    QCOMPARE(warnings.take(), QStringList());
    QCOMPARE(spoken(bare.controls[Page]), "1");
    QCOMPARE(spoken(bare.controls[Current], QAccessible::Description), "3 / 4");
}

QTEST_MAIN(KovaPagingBarTest)
#include "kova-paging-bar-test.moc"
