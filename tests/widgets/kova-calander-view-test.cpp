#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAccessible>
#include <QCalendarWidget>
#include <QDir>
#include <QHeaderView>
#include <QMenu>
#include <QRandomGenerator>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include <set>

namespace {

QStringList monthNames()
{
    QStringList names;
    for (const char *month :
         {"jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"}) {
        names.append(ComponentStrings::getInstance()->getString(QLatin1String("month_")
                                                                + QLatin1String(month)));
    }
    return names;
}

// The window around the view counts the clicks that reach it.
class HostWindow : public QWidget
{
public:
    int clicks = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++clicks; }
};

} // namespace

class KovaCalanderViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup();
    void showsTheTextsOfTheHost();
    void weekdaysStandOverTheirDays();
    void monthNamesFitInEveryLanguage();
    void turnsToMonthsThatExist();
    void monthMenuTurnsThePage();
    void localeChangesNothing();
    void tabWalksThroughTheParts();
    void daysByKeyboard();
    void returnChoosesWhatIsSeen();
    void yearByKeyboard();
    void daysByMouse();
    void daysOutsideTheLimits();
    void todayOutsideTheLimits();
    void survivesAnyDates();
    void hasNoItems();

private:
    void press(int key, Qt::KeyboardModifiers modifiers = {});
    void click(QWidget *widget, const QPoint &position);
    QPoint cellOf(const QDate &date) const;
    QImage pictureOf(const QDate &date);
    QWidget *focused() const { return m_window->focusWidget(); }
    template<class Part>
    Part *part(const char *name) const
    {
        return m_view->findChild<Part *>(QLatin1String("qt_calendar_") + QLatin1String(name));
    }

    HostWindow *m_window = nullptr;
    KovaCalanderView *m_view = nullptr;
    QCalendarWidget *m_calendar = nullptr;
    QTableView *m_days = nullptr;
    QSignalSpy *m_chosen = nullptr;
};

void KovaCalanderViewTest::init()
{
    m_window = new HostWindow;
    auto *layout = new QVBoxLayout(m_window);
    m_view = new KovaCalanderView(nullptr);
    m_view->setFixedSize(kovaPx(280), kovaPx(260));
    layout->addWidget(m_view);
    m_calendar = m_view->findChild<QCalendarWidget *>();
    m_days = part<QTableView>("calendarview");
    m_chosen = new QSignalSpy(m_view, &KovaCalanderView::sigDateSelect);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    m_view->setSelectedDate(QDate(2024, 3, 13));
    m_days->setFocus();
}

void KovaCalanderViewTest::cleanup()
{
    delete m_chosen;
    delete m_window;
}

void KovaCalanderViewTest::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window->windowHandle(), Qt::Key(key), modifiers);
}

void KovaCalanderViewTest::click(QWidget *widget, const QPoint &position)
{
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {},
                      widget->mapTo(m_window, position));
}

// The middle of the day's cell in the grid; weeks begin on Sunday.
QPoint KovaCalanderViewTest::cellOf(const QDate &date) const
{
    const QDate first(m_calendar->yearShown(), m_calendar->monthShown(), 1);
    const int column = first.dayOfWeek() % 7;
    // A month that begins on a Sunday leaves the first row to the month before it.
    const int position = int(first.daysTo(date)) + (column ? column : 7);
    return m_days->visualRect(m_days->model()->index(position / 7, position % 7)).center();
}

QImage KovaCalanderViewTest::pictureOf(const QDate &date)
{
    const QModelIndex index = m_days->indexAt(cellOf(date));
    return m_days->viewport()->grab(m_days->visualRect(index)).toImage();
}

void KovaCalanderViewTest::showsTheTextsOfTheHost()
{
    const KovaCalanderView view(nullptr);
    const auto *month = view.findChild<QToolButton *>(QStringLiteral("qt_calendar_monthbutton"));
    QCOMPARE(month->text(), monthNames().at(QDate::currentDate().month() - 1));
    QStringList entries;
    for (const QAction *action : month->menu()->actions())
        entries.append(action->text());
    QCOMPARE(entries.join(QLatin1Char(' ')),
             QStringLiteral("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec"));
    QCOMPARE(view.accessibleName(), QStringLiteral("Calendar"));
    QCOMPARE(part<QToolButton>("prevmonth")->accessibleName(), QStringLiteral("Previous month"));
    QCOMPARE(part<QToolButton>("nextmonth")->accessibleName(), QStringLiteral("Next month"));
    const auto *today = part<QPushButton>("today_button");
    QCOMPARE(today->text(), QStringLiteral("Today"));
    QCOMPARE(today->height(), kovaPx(24));
    QCOMPARE(today->styleSheet(), getStyleSheet("component.cancel_button", false));
    QCOMPARE(m_calendar->weekdayTextFormat(Qt::Sunday).foreground().color(), QColor(Qt::black));
    QCOMPARE(m_calendar->weekdayTextFormat(Qt::Saturday).foreground().color(), QColor(Qt::black));
}

void KovaCalanderViewTest::weekdaysStandOverTheirDays()
{
    const auto *row = part<QTableWidget>("weekdayview");
    QString letters;
    for (int column = 0; column < 7; ++column)
        letters += row->item(0, column)->text();
    QCOMPARE(letters, QStringLiteral("SMTWTFS"));
    QCOMPARE(row->height(), kovaPx(30));
    QVERIFY(m_days->rowHeight(5) >= m_days->fontMetrics().height());

    QFont large = m_view->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    for (const QFont &font : {m_view->font(), large}) {
        m_view->setFont(font);
        QCoreApplication::processEvents();
        QCOMPARE(row->mapTo(m_calendar, QPoint()).y() + row->height(),
                 m_days->mapTo(m_calendar, QPoint()).y());
        for (int column = 0; column < 7; ++column) {
            QCOMPARE(row->columnViewportPosition(column), m_days->columnViewportPosition(column));
            QCOMPARE(row->columnWidth(column), m_days->columnWidth(column));
        }
        QCOMPARE(m_days->columnViewportPosition(6) + m_days->columnWidth(6),
                 m_days->viewport()->width());
        QCOMPARE(m_days->rowViewportPosition(5) + m_days->rowHeight(5),
                 m_days->viewport()->height());
    }
}

void KovaCalanderViewTest::monthNamesFitInEveryLanguage()
{
    const auto languages =
        QDir(themeFolder() + QLatin1String("/strings")).entryInfoList({QStringLiteral("*.json")});
    QCOMPARE(languages.size(), 20);
    for (const QFileInfo &language : languages) {
        installThemeStrings(language.baseName());
        KovaCalanderView view(nullptr);
        view.setStyleSheet(getStyleSheet("component.date_selector", false));
        view.setFixedSize(kovaPx(280), kovaPx(260));
        view.show();
        const auto *bar = view.findChild<QWidget *>(QStringLiteral("qt_calendar_navigationbar"));
        const auto *button =
            view.findChild<QToolButton *>(QStringLiteral("qt_calendar_monthbutton"));
        const auto *next = view.findChild<QToolButton *>(QStringLiteral("qt_calendar_nextmonth"));
        std::set<int> widths;
        const QStringList names = monthNames();
        for (int month = 1; month <= 12; ++month) {
            view.setCurrentPage(2024, month);
            QCoreApplication::sendPostedEvents();
            QCOMPARE(button->text(), names.at(month - 1));
            widths.insert(button->width());
            QVERIFY2(button->width() >= button->sizeHint().width(), qPrintable(button->text()));
            QVERIFY2(bar->rect().contains(next->geometry()), qPrintable(button->text()));
        }
        QCOMPARE(widths.size(), 1U);
    }
    installThemeStrings(QStringLiteral("enu"));
}

void KovaCalanderViewTest::turnsToMonthsThatExist()
{
    const auto page = [this] {
        return QDate(m_calendar->yearShown(), m_calendar->monthShown(), 1);
    };
    m_view->setCurrentPage(2031, 2);
    QCOMPARE(page(), QDate(2031, 2, 1));
    QCOMPARE(part<QToolButton>("monthbutton")->text(), QStringLiteral("February"));
    QCOMPARE(part<QToolButton>("yearbutton")->text(), QStringLiteral("2031"));
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));
    for (int month : {0, 13, -1}) {
        m_view->setCurrentPage(2024, month);
        QCOMPARE(page(), QDate(2031, 2, 1));
    }
    m_view->setCurrentPage(12000, 5);
    QCOMPARE(page(), QDate(9999, 12, 1));
    m_view->setCurrentPage(-40, 5);
    QCOMPARE(page(), QDate(1, 1, 1));
    m_view->setMaximumDate(QDate(2025, 6, 3));
    m_view->setCurrentPage(2030, 1);
    QCOMPARE(page(), QDate(2025, 6, 1));
    QVERIFY(m_chosen->isEmpty());
}

void KovaCalanderViewTest::monthMenuTurnsThePage()
{
    auto *button = part<QToolButton>("monthbutton");
    QAction *march = button->menu()->actions().at(2);
    march->trigger(); // the month that is shown already
    QCOMPARE(button->text(), QStringLiteral("March"));
    button->menu()->actions().at(8)->trigger();
    QCOMPARE(button->text(), QStringLiteral("September"));
    QCOMPARE(m_calendar->monthShown(), 9);
    m_view->slotMonthTriggered(march);
    QCOMPARE(button->text(), QStringLiteral("March"));
    m_view->slotMonthTriggered(nullptr);

    button->setFocus();
    bool opened = false;
    QTimer::singleShot(0, this, [&] {
        opened = button->menu()->isVisible();
        QWindow *menu = button->menu()->windowHandle();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    press(Qt::Key_Return);
    QVERIFY(opened);
    QCOMPARE(button->text(), QStringLiteral("January"));
    QCOMPARE(m_calendar->monthShown(), 1);
}

void KovaCalanderViewTest::localeChangesNothing()
{
    m_window->setLocale(QLocale(QLocale::German));
    QCOMPARE(m_calendar->firstDayOfWeek(), Qt::Sunday);
    QCOMPARE(part<QToolButton>("monthbutton")->text(), QStringLiteral("March"));
    QCOMPARE(part<QToolButton>("monthbutton")->menu()->actions().at(4)->text(),
             QStringLiteral("May"));
    const auto icon = [this](const char *name) {
        return part<QToolButton>(name)->icon().pixmap(100).toImage();
    };
    const QImage backward = getGlobalImage("bt_pagebar_backend", ImageManager::Default).toImage();
    const QImage forward = getGlobalImage("bt_pagebar_nextend", ImageManager::Default).toImage();
    QCOMPARE(icon("prevmonth"), backward);
    m_window->setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(icon("prevmonth"), forward);
    QCOMPARE(icon("nextmonth"), backward);
}

void KovaCalanderViewTest::tabWalksThroughTheParts()
{
    const QList<QWidget *> chain = {m_view,
                                    part<QToolButton>("prevmonth"),
                                    part<QToolButton>("nextmonth"),
                                    part<QToolButton>("monthbutton"),
                                    part<QToolButton>("yearbutton"),
                                    m_days,
                                    part<QPushButton>("today_button")};
    m_view->setFocus();
    for (int i = 1; i <= 2 * chain.size(); ++i) {
        press(Qt::Key_Tab);
        QCOMPARE(focused(), chain.at(i % chain.size()));
    }
    for (int i = 2 * chain.size() - 1; i >= 0; --i) {
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(focused(), chain.at(i % chain.size()));
    }

    // The focus must show on every stop.
    m_view->setStyleSheet(getStyleSheet("component.date_selector", false));
    for (QWidget *stop : chain) {
        m_days->setFocus();
        if (stop == m_days)
            chain.first()->setFocus();
        const QImage before = stop->grab().toImage();
        stop->setFocus();
        QVERIFY2(stop->grab().toImage() != before, qPrintable(stop->objectName()));
    }
}

void KovaCalanderViewTest::daysByKeyboard()
{
    const auto after = [this](int key) {
        press(key);
        return m_calendar->selectedDate();
    };
    QCOMPARE(after(Qt::Key_Right), QDate(2024, 3, 14));
    QCOMPARE(after(Qt::Key_Down), QDate(2024, 3, 21));
    QCOMPARE(after(Qt::Key_Left), QDate(2024, 3, 20));
    QCOMPARE(after(Qt::Key_Up), QDate(2024, 3, 13));
    QCOMPARE(after(Qt::Key_Home), QDate(2024, 3, 1));
    QCOMPARE(after(Qt::Key_Up), QDate(2024, 2, 23));
    QCOMPARE(part<QToolButton>("monthbutton")->text(), QStringLiteral("February"));
    QCOMPARE(after(Qt::Key_End), QDate(2024, 2, 29));
    QCOMPARE(after(Qt::Key_PageDown), QDate(2024, 3, 29));
    QCOMPARE(after(Qt::Key_PageUp), QDate(2024, 2, 29));
    QVERIFY(m_chosen->isEmpty());
    press(Qt::Key_Return);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 2, 29)});
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 3, 1)});
    press(Qt::Key_1);
    press(Qt::Key_7);
    press(Qt::Key_Enter);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 3, 17)});
    QVERIFY(m_chosen->isEmpty());
}

void KovaCalanderViewTest::returnChoosesWhatIsSeen()
{
    part<QToolButton>("nextmonth")->setFocus();
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    QCOMPARE(part<QToolButton>("monthbutton")->text(), QStringLiteral("May"));
    QVERIFY(m_chosen->isEmpty());
    m_days->setFocus();
    press(Qt::Key_Return);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 5, 13)});

    // The same for a day at each edge of a page, by the number that stands in its cell.
    for (int month = 1; month <= 12; ++month) {
        for (int day : {1, 8, 15, 22, QDate(2023, month, 1).daysInMonth()}) {
            m_view->setSelectedDate(QDate(2023, month, day));
            m_view->setSelectedDate(QDate(2020, 1, day));
            m_view->setCurrentPage(2023, month);
            press(Qt::Key_Return);
            QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2023, month, day)});
        }
    }

    part<QPushButton>("today_button")->setFocus();
    press(Qt::Key_Return);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate::currentDate()});
    QCOMPARE(m_calendar->selectedDate(), QDate::currentDate());
}

void KovaCalanderViewTest::yearByKeyboard()
{
    auto *edit = part<QSpinBox>("yearedit");
    auto *button = part<QToolButton>("yearbutton");
    const auto openEdit = [&] {
        button->setFocus();
        press(Qt::Key_Return);
        return edit->isVisible() && focused() == edit;
    };
    QVERIFY(openEdit());
    for (int key : {Qt::Key_2, Qt::Key_0, Qt::Key_3, Qt::Key_1, Qt::Key_Return})
        press(key);
    QVERIFY(!edit->isVisible());
    QCOMPARE(m_calendar->yearShown(), 2031);
    QCOMPARE(button->text(), QStringLiteral("2031"));
    QCOMPARE(focused(), m_days);
    QVERIFY(m_chosen->isEmpty());

    QVERIFY(openEdit());
    press(Qt::Key_Up);
    press(Qt::Key_Tab);
    QCOMPARE(focused(), m_days);
    QCOMPARE(m_calendar->yearShown(), 2032);
    QVERIFY(m_days->currentIndex().isValid());

    QVERIFY(openEdit());
    press(Qt::Key_9);
    press(Qt::Key_Escape);
    QVERIFY(!edit->isVisible());
    QCOMPARE(m_calendar->yearShown(), 2032);
    press(Qt::Key_Return);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2032, 3, 13)});
}

void KovaCalanderViewTest::daysByMouse()
{
    click(m_days->viewport(), cellOf(QDate(2024, 3, 5)));
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 3, 5)});
    click(m_days->viewport(), cellOf(QDate(2024, 2, 26)));
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 2, 26)});
    QCOMPARE(m_calendar->monthShown(), 2);
    click(part<QToolButton>("nextmonth"), QPoint(5, 5));
    QCOMPARE(m_calendar->monthShown(), 3);

    // Nothing else in the view chooses, and no click falls through it.
    click(part<QTableWidget>("weekdayview"), QPoint(20, 15));
    click(part<QWidget>("navigationbar"),
          part<QToolButton>("prevmonth")->geometry().topRight() + QPoint(2, 5));
    click(m_view, QPoint(3, 3));
    click(m_view, QPoint(20, m_view->height() - 20));
    QVERIFY(m_chosen->isEmpty());
    QCOMPARE(m_window->clicks, 0);
}

void KovaCalanderViewTest::daysOutsideTheLimits()
{
    m_view->setStyleSheet(getStyleSheet("component.date_selector", false));
    const QDate before(2024, 3, 7);
    const QImage choosable = pictureOf(before);
    m_view->setMinimumDate(QDate(2024, 3, 8));
    m_view->setMaximumDate(QDate(2024, 3, 20));
    QVERIFY(pictureOf(before) != choosable);
    // Not in the way in which days of the neighbouring months are shown either.
    const QImage outside = pictureOf(QDate(2024, 3, 7));
    m_view->setMinimumDate(QDate(2024, 1, 1));
    m_view->setCurrentPage(2024, 4);
    m_view->setMaximumDate(QDate(2025, 1, 1));
    m_view->setCurrentPage(2024, 4);
    QVERIFY(pictureOf(QDate(2024, 5, 7)) != outside);

    m_view->setMinimumDate(QDate(2024, 3, 8));
    m_view->setMaximumDate(QDate(2024, 3, 20));
    m_view->setSelectedDate(QDate(2024, 3, 13));
    for (const QDate &date : {QDate(2024, 2, 28), before, QDate(2024, 3, 21)})
        click(m_days->viewport(), cellOf(date));
    QVERIFY(m_chosen->isEmpty());
    QCOMPARE(m_window->clicks, 0);
    m_view->setSelectedDate(before);
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));
    QVERIFY(!part<QToolButton>("nextmonth")->isEnabled());

    m_days->setFocus();
    press(Qt::Key_PageDown);
    press(Qt::Key_Return);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 3, 20)});

    // A page can be turned so that the cursor stands on a day that cannot be chosen.
    m_view->setMaximumDate(QDate(2024, 4, 10));
    m_view->setCurrentPage(2024, 4);
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    QVERIFY(m_chosen->isEmpty());
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    QCOMPARE(m_chosen->takeFirst(), QList<QVariant>{QDate(2024, 4, 10)});
}

void KovaCalanderViewTest::todayOutsideTheLimits()
{
    auto *today = part<QPushButton>("today_button");
    QVERIFY(today->isEnabled());
    m_view->setMaximumDate(QDate::currentDate().addDays(-1));
    QVERIFY(!today->isEnabled());
    click(today, today->rect().center());
    m_view->selectToday();
    QVERIFY(m_chosen->isEmpty());
    m_view->setMaximumDate(QDate::currentDate());
    click(today, today->rect().center());
    QCOMPARE(*m_chosen, QList<QList<QVariant>>{{QDate::currentDate()}});
}

void KovaCalanderViewTest::survivesAnyDates()
{
    m_view->setMinimumDate(QDate());
    m_view->setMaximumDate(QDate());
    QVERIFY(part<QPushButton>("today_button")->isEnabled());
    m_view->setSelectedDate(QDate());
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));

    QRandomGenerator random(7);
    const auto anyDate = [&random] {
        if (random.bounded(8) == 0)
            return QDate();
        return QDate(int(random.bounded(-6000, 14000)), 1 + int(random.bounded(12)),
                     1 + int(random.bounded(28)));
    };
    for (int i = 0; i < 400; ++i) {
        switch (random.bounded(6)) {
        case 0:
            m_view->setMinimumDate(anyDate());
            break;
        case 1:
            m_view->setMaximumDate(anyDate());
            break;
        case 2:
            m_view->setCurrentPage(int(random.bounded(-6000, 14000)), int(random.bounded(15)));
            break;
        case 3:
            m_view->setSelectedDate(anyDate());
            break;
        case 4:
            part<QToolButton>(random.bounded(2) ? "prevmonth" : "nextmonth")->click();
            break;
        default:
            press(random.bounded(2) ? Qt::Key_PageDown : Qt::Key_Return);
            break;
        }
        const QDate page(m_calendar->yearShown(), m_calendar->monthShown(), 1);
        QVERIFY(page.isValid() && page.year() >= 1 && page.year() <= 9999);
        QCOMPARE(part<QToolButton>("yearbutton")->text(), QString::number(page.year()));
        QCOMPARE(part<QToolButton>("monthbutton")->text(), monthNames().at(page.month() - 1));
        QVERIFY(m_calendar->minimumDate() <= m_calendar->maximumDate());
        QVERIFY(m_days->currentIndex().isValid());
    }
    for (const QList<QVariant> &chosen : qAsConst(*m_chosen))
        QVERIFY(chosen.first().toDate().isValid());
}

void KovaCalanderViewTest::hasNoItems()
{
    QStandardItemModel model(3, 1);
    m_view->setModel(&model);
    const QModelIndex index = model.index(0, 0);
    QVERIFY(m_view->visualRect(index).isEmpty());
    m_view->scrollTo(index);
    QVERIFY(!m_view->indexAt(QPoint(10, 10)).isValid());
    m_view->setCurrentIndex(index);
    press(Qt::Key_Down);
    QVERIFY(QAccessible::queryAccessibleInterface(m_view)->isValid());
    QVERIFY(m_view->sizeHint().height() >= m_view->minimumSizeHint().height());
}

QTEST_MAIN(KovaCalanderViewTest)
#include "kova-calander-view-test.moc"
