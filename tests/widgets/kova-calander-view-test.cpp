// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/calendar.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>

#include <numeric>

// The calendar by itself: what it is called, how its days are marked, to which months it turns, and
// which day is chosen by keys, by typed digits and by clicks. How it pops up is not tested here.
class KovaCalanderViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { delete m_window; }
    void speaksTheLanguageOfTheHost();
    void monthMenuTellsMonthsApart();
    void daysHaveMarks();
    void weekdaysStandOverTheirDays();
    void monthNamesFitInEveryLanguage();
    void turnsToMonthsThatExist();
    void tabWalksThroughTheParts();
    void digitsMeanADate_data();
    void digitsMeanADate();
    void typingEnds();
    void returnChoosesWhatIsSeen();
    void monthAndYearByKeyboard();
    void limitsKeepDaysFromBeingChosen();

private:
    void press(std::initializer_list<int> keys) { ::press(m_window, keys); }
    QDate takeChosen() { return m_chosen.isEmpty() ? QDate() : m_chosen.takeFirst(); }
    QVector<int> inkIn(const QDate &date, const QColor &color, int difference) const;
    int share(const QDate &date, const QColor &color) const;
    void type(const QString &text);

    QWidget *m_window = nullptr;
    KovaCalanderView *m_view = nullptr;
    QCalendarWidget *m_calendar = nullptr;
    QTableView *m_days = nullptr;
    QToolButton *m_month = nullptr;
    QList<QDate> m_chosen;
};

void KovaCalanderViewTest::init()
{
    m_window = new QWidget;
    auto *layout = new QVBoxLayout(m_window);
    m_view = new KovaCalanderView(nullptr);
    m_view->setStyleSheet(getStyleSheet("component.date_selector", false));
    m_view->setFixedSize(kovaPx(280), kovaPx(260));
    layout->addWidget(m_view);
    m_calendar = m_view->findChild<QCalendarWidget *>();
    m_days = calendarDays(m_view);
    m_month = calendarPart(m_view, "monthbutton");
    m_chosen.clear();
    connect(m_view, &KovaCalanderView::sigDateSelect, m_view,
            [this](const QDate &date) { m_chosen.append(date); });
    showActive(m_window);
    m_view->setSelectedDate(QDate(2024, 3, 13));
    m_days->setFocus();
}

void KovaCalanderViewTest::speaksTheLanguageOfTheHost()
{
    // The locale changes nothing.
    m_window->setLocale(QLocale(QLocale::German));
    QStringList texts = {calendarPart<QPushButton>(m_view, "today_button")->text(), spoken(m_view),
                         spoken(calendarPart(m_view, "prevmonth")),
                         spoken(calendarPart(m_view, "nextmonth")), m_month->text()};
    for (const QAction *action : m_month->menu()->actions())
        texts.append(action->text());
    QCOMPARE(texts.join("|"), "Today|Calendar|Previous month|Next month|March|"
                              "Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec");
    QCOMPARE(m_calendar->firstDayOfWeek(), Qt::Sunday);
    // Only the direction of writing turns the arrows around.
    const auto showsArrow = [this](const QString &button, const char *image) {
        return calendarPart(m_view, button)->icon().pixmap(100).toImage()
            == getGlobalImage(image, ImageManager::Default).toImage();
    };
    QVERIFY(showsArrow("prevmonth", "bt_pagebar_backend"));
    QVERIFY(showsArrow("nextmonth", "bt_pagebar_nextend"));
    m_window->setLayoutDirection(Qt::RightToLeft);
    QVERIFY(showsArrow("prevmonth", "bt_pagebar_nextend"));
    QVERIFY(showsArrow("nextmonth", "bt_pagebar_backend"));
}

void KovaCalanderViewTest::monthMenuTellsMonthsApart()
{
    installThemeStrings("fra");
    KovaCalanderView view(nullptr);
    installThemeStrings("enu");
    const auto *month = calendarPart(&view, "monthbutton");
    QMenu *menu = month->menu();
    QCOMPARE(month->text(), menu->actions().at(QDate::currentDate().month() - 1)->toolTip());
    view.setCurrentPage(2024, 1);
    QVERIFY(menu->toolTipsVisible());
    QAccessibleInterface *spokenMenu = QAccessible::queryAccessibleInterface(menu);
    for (const auto &[index, name] : {std::pair(5, "juin"), std::pair(6, "juillet")}) {
        QCOMPARE(menu->actions().at(index)->text(), "jui");
        QCOMPARE(menu->actions().at(index)->toolTip(), name);
        QAccessibleInterface *entry = spokenMenu->child(index);
        QCOMPARE(entry->text(QAccessible::Name), name);
        QCOMPARE(entry->role(), QAccessible::MenuItem);
        QCOMPARE(spokenMenu->indexOfChild(entry), index);
    }

    menu->popup(QPoint(30, 30));
    menu->setActiveAction(menu->actions().at(6));
    QAccessibleInterface *july = spokenMenu->child(6);
    QVERIFY(july->state().focused && !july->state().disabled && !july->state().invisible);
    QCOMPARE(spokenMenu->childAt(july->rect().center().x(), july->rect().center().y()), july);
    menu->hide();
    QVERIFY(july->state().invisible);
    view.setMaximumDate(QDate(2024, 8, 1));
    QVERIFY(spokenMenu->child(8)->state().disabled);
    july->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(month->text(), "juillet");
}

// How many pixels of about this color each row of the day's cell has.
QVector<int> KovaCalanderViewTest::inkIn(const QDate &date, const QColor &color,
                                         int difference) const
{
    const QImage picture = m_days->viewport()->grab(calendarCell(m_view, date)).toImage();
    QVector<int> rows(picture.height());
    for (int i = 0; i < picture.width() * picture.height(); ++i) {
        const QColor pixel = picture.pixelColor(i % picture.width(), i / picture.width());
        const int distance = qAbs(pixel.red() - color.red()) + qAbs(pixel.green() - color.green())
                           + qAbs(pixel.blue() - color.blue());
        rows[i / picture.width()] += distance <= difference;
    }
    return rows;
}

// The share of the day's cell, in percent, that has exactly this color.
int KovaCalanderViewTest::share(const QDate &date, const QColor &color) const
{
    const QVector<int> rows = inkIn(date, color, 0);
    const QSize cell = calendarCell(m_view, date).size();
    return 100 * std::accumulate(rows.begin(), rows.end(), 0) / (cell.width() * cell.height());
}

void KovaCalanderViewTest::daysHaveMarks()
{
    const QDate today = QDate::currentDate();
    const QDate first(today.year(), today.month(), 1);
    const QDate other = today == first ? first.addDays(1) : first;
    const QDate walkedTo = first.addDays(20) == today ? first.addDays(21) : first.addDays(20);
    m_view->setTodayColor(Qt::magenta);
    m_view->setOtherMonthColor(Qt::green);
    m_view->setSelectedDate(other);
    m_calendar->setSelectedDate(walkedTo);
    const QPalette colors = m_days->palette();
    const QColor fill = colors.color(QPalette::Highlight);
    QVERIFY(share(other, fill) > 50);
    QVERIFY(share(walkedTo, fill) > 8 && share(walkedTo, fill) < 30);
    QVERIFY(share(today, Qt::magenta) > 0);
    QCOMPARE(share(today, fill), 0);

    // The pointer tints a day that can be chosen, and leaves no tint behind.
    const QDate pointed = walkedTo.addDays(walkedTo.addDays(1) == today ? 2 : 1);
    const auto tintWithPointerAt = [&](const QPoint &place) {
        QTest::mouseMove(m_window->windowHandle(), place);
        return share(pointed, colors.color(QPalette::AlternateBase));
    };
    const auto placeOf = [this](const QDate &date) {
        return m_days->viewport()->mapTo(m_window, calendarCell(m_view, date).center());
    };
    for (const QPoint &beside : {placeOf(other), QPoint(1, 1)}) {
        QVERIFY(tintWithPointerAt(placeOf(pointed)) > 50);
        QCOMPARE(tintWithPointerAt(beside), 0);
    }

    // Other months, and days out of reach, have an ink of their own. The fullest row of the cell
    // tells a number from the line through it.
    const auto inked = [this](const QDate &date, const QColor &color) {
        const QVector<int> rows = inkIn(date, color, 190);
        return *std::max_element(rows.begin(), rows.end());
    };
    m_view->setSelectedDate(QDate(2024, 3, 13));
    QVERIFY(inked(QDate(2024, 4, 6), Qt::green) > 0);
    QVERIFY(inked(QDate(2024, 3, 16), colors.color(QPalette::Text)) > 0); // a Saturday
    m_view->setMinimumDate(QDate(2024, 3, 8));
    m_view->setMaximumDate(QDate(2024, 3, 20));
    QCOMPARE(inked(QDate(2024, 4, 6), Qt::green), 0);
    const QColor off = colors.color(QPalette::Disabled, QPalette::Text);
    QVERIFY(inked(QDate(2024, 3, 1), off) >= m_days->fontMetrics().horizontalAdvance("1") - 2);
}

void KovaCalanderViewTest::weekdaysStandOverTheirDays()
{
    const auto *row = calendarPart<QTableWidget>(m_view, "weekdayview");
    QCOMPARE(row->styleSheet() + row->horizontalHeader()->styleSheet(),
             getStyleSheet("component.table", false)
                 + getStyleSheet("component.table_header", false));
    QFont large = m_view->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    for (const QFont &font : {m_view->font(), large}) {
        m_view->setFont(font);
        if (font == large)
            m_view->setFixedSize(m_view->minimumSizeHint());
        QCoreApplication::processEvents();
        QVERIFY(m_days->rowHeight(5) >= m_days->fontMetrics().height());
        QString letters;
        for (int column = 0; column < 7; ++column) {
            letters += row->item(0, column)->text();
            QCOMPARE(row->columnViewportPosition(column), m_days->columnViewportPosition(column));
        }
        QCOMPARE(letters, "SMTWTFS");
        QCOMPARE(row->mapTo(m_calendar, row->rect().bottomLeft()) + QPoint(0, 1),
                 m_days->mapTo(m_calendar, QPoint()));
        // All weeks are in sight.
        const QRect last = m_days->visualRect(m_days->model()->index(5, 6));
        QCOMPARE(last.bottomRight(), m_days->viewport()->rect().bottomRight());
    }
}

void KovaCalanderViewTest::monthNamesFitInEveryLanguage()
{
    for (const QString &file : QDir(themeFolder() + "/strings").entryList({"*.json"})) {
        installThemeStrings(file.section('.', 0, 0));
        cleanup();
        init();
        const int width = m_month->width();
        const QSize wanted = m_view->sizeHint();
        QVERIFY(wanted.width() >= kovaPx(280) && wanted.height() >= kovaPx(260));
        const auto *bar = calendarPart<QWidget>(m_view, "navigationbar");
        for (int month = 1; month <= 12; ++month) {
            m_view->setCurrentPage(2024, month);
            QCoreApplication::sendPostedEvents();
            QVERIFY2(m_month->width() == width && width >= m_month->sizeHint().width()
                         && bar->rect().contains(calendarPart(m_view, "nextmonth")->geometry()),
                     qPrintable(file + ' ' + m_month->text()));
        }
    }
    installThemeStrings("enu");
}

void KovaCalanderViewTest::turnsToMonthsThatExist()
{
    const auto pageAfter = [this](int year, int month) {
        m_view->setCurrentPage(year, month);
        return calendarPage(m_view);
    };
    QCOMPARE(pageAfter(2031, 2), QDate(2031, 2, 1));
    QCOMPARE(m_month->text(), "February");
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));
    QCOMPARE(pageAfter(2024, 13), QDate(2031, 2, 1));
    m_view->setMinimumDate(QDate(-600, 5, 1));
    QCOMPARE(pageAfter(-600, 5), QDate(1, 1, 1));
    m_view->setMaximumDate(QDate(12000, 5, 1));
    QCOMPARE(pageAfter(12000, 5), QDate(9999, 12, 1));
    // An invalid date changes no limit.
    for (const QDate &date : {QDate(2020, 2, 9), QDate()})
        m_view->setMinimumDate(date);
    QCOMPARE(pageAfter(1999, 1), QDate(2020, 2, 1));
    for (const QDate &date : {QDate(2025, 6, 3), QDate()})
        m_view->setMaximumDate(date);
    QCOMPARE(pageAfter(2030, 1), QDate(2025, 6, 1));
}

void KovaCalanderViewTest::tabWalksThroughTheParts()
{
    QList<QWidget *> chain = {m_view};
    for (const char *name :
         {"prevmonth", "nextmonth", "monthbutton", "yearbutton", "calendarview", "today_button"})
        chain.append(calendarPart<QWidget>(m_view, name));
    m_view->setFocus();
    for (int i = 1; i <= 2 * chain.size(); ++i) {
        press({Qt::Key_Tab});
        QWidget *next = m_window->focusWidget();
        QCOMPARE(next, chain.at(i % chain.size()));
        const QImage picture = next->grab().toImage();
        next->clearFocus();
        QVERIFY2(next->grab().toImage() != picture, next->metaObject()->className());
        next->setFocus();
    }
    for (int i = 2 * chain.size() - 1; i >= 0; --i) {
        press({Qt::SHIFT + Qt::Key_Backtab});
        QCOMPARE(m_window->focusWidget(), chain.at(i % chain.size()));
    }
}

void KovaCalanderViewTest::digitsMeanADate_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *locale, const QString &typed, const QDate &date,
                        const QString &shown) {
        QTest::addRow("%s %s", locale, qPrintable(typed)) << locale << typed << date << shown;
    };
    row("de", "5", QDate(2024, 3, 5), "<b>05</b>.03.2024");
    row("en_US", "05", QDate(2024, 3, 5), "03/<b>05</b>/2024");
    row("de", "07042031", QDate(2031, 4, 7), "<b>07</b>.<b>04</b>.<b>2031</b>");
    row("en_US", "07042031", QDate(2031, 7, 4), "<b>07</b>/<b>04</b>/<b>2031</b>");
    row("ja", "20310407", QDate(2031, 4, 7), "<b>2031</b>/<b>04</b>/<b>07</b>");
    row("C", "07042031", QDate(2031, 4, 7), "<b>07</b> <b>04</b> <b>2031</b>");
    row("de", "0704", QDate(2024, 4, 7), "<b>07</b>.<b>04</b>.2024");
    row("ja", "0704", QDate(2024, 7, 4), "2024/<b>07</b>/<b>04</b>");
    // A year of two digits is near the one that is shown.
    row("de", "070473", QDate(2073, 4, 7), "<b>07</b>.<b>04</b>.<b>2073</b>");
    row("de", "070474", QDate(1974, 4, 7), "<b>07</b>.<b>04</b>.<b>1974</b>");
    row("de", "7.4.31", QDate(2031, 4, 7), "<b>07</b>.<b>04</b>.<b>2031</b>");
    row("en_US", "7/4", QDate(2024, 7, 4), "<b>07</b>/<b>04</b>/2024");
    row("en_US", "2031-4-7", QDate(2031, 4, 7), "<b>04</b>/<b>07</b>/<b>2031</b>");
    row("fa", QString::fromUtf8("\u06f0\u06f5"), QDate(2024, 3, 5),
        QString::fromUtf8("\u06f2\u06f0\u06f2\u06f4/\u06f0\u06f3/<b>\u06f0\u06f5</b>"));
    row("de", "19\b7", QDate(2024, 3, 17), "<b>17</b>.03.2024");
    // Neither a date out of range nor an invalid one.
    row("de", "07042099", QDate(), "<b>07</b>.<b>04</b>.<b>2099</b>");
    for (const QString typed : {"0", "00", "32", "3102", "070", "07042", "0704203", "29022023",
                                "070420319", "7.4.203", "7..31", "123.4.2031"})
        row("de", typed, QDate(), QString("<b>%1</b>").arg(typed));
}

// A backspace stands for the key.
void KovaCalanderViewTest::type(const QString &text)
{
    for (const QChar letter : text) {
        if (letter == '\b')
            press({Qt::Key_Backspace});
        else
            QTest::sendKeyEvent(QTest::Click, m_days, Qt::Key(letter.unicode()), QString(letter),
                                Qt::NoModifier);
    }
}

void KovaCalanderViewTest::digitsMeanADate()
{
    QFETCH(QString, locale);
    QFETCH(QString, typed);
    QFETCH(QDate, date);
    m_window->setLocale(QLocale(locale));
    m_view->setMaximumDate(QDate(2080, 1, 1));
    // The shown month counts, not that of the selected day.
    m_view->setSelectedDate(QDate(2024, 5, 13));
    m_view->setCurrentPage(2024, 3);
    const auto *label = calendarPart<QLabel>(m_view, "typed_date");
    type(typed);
    QVERIFY(label->isVisible() && m_days->geometry().contains(label->geometry()));
    QTEST(label->text(), "shown");
    press({Qt::Key_Return});
    QCOMPARE(takeChosen(), date);
    QCOMPARE(label->isVisible(), !date.isValid());
    QCOMPARE(label->property("error").toBool(), !date.isValid());
    press({Qt::Key_Escape});
    QVERIFY(!label->isVisible());
    QCOMPARE(calendarPage(m_view),
             date.isValid() ? QDate(date.year(), date.month(), 1) : QDate(2024, 3, 1));
}

void KovaCalanderViewTest::typingEnds()
{
    const auto *label = calendarPart<QLabel>(m_view, "typed_date");
    const auto isTyping = [&] { return label->isVisible(); };
    // What is no part of a date is none of its business.
    type("x.");
    press({Qt::CTRL + Qt::Key_5});
    QVERIFY(!isTyping());
    type("5\b");
    QVERIFY(!isTyping());

    const auto selectedAfter = [&](const QString &typed, int endedBy) {
        type(typed);
        press({endedBy});
        return isTyping() ? QDate() : m_calendar->selectedDate();
    };
    QCOMPARE(selectedAfter("5", Qt::Key_Escape), QDate(2024, 3, 13));
    QCOMPARE(selectedAfter("0504", Qt::Key_PageDown), QDate(2024, 5, 5));
    QCOMPARE(selectedAfter("0703", Qt::Key_Home), QDate(2024, 3, 1));
    QCOMPARE(selectedAfter("8", Qt::Key_Tab), QDate(2024, 3, 8));
    m_days->setFocus();
    m_calendar->setDateEditAcceptDelay(1);
    type("9");
    QTRY_VERIFY(!isTyping());
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 9));
    type("99");
    QTRY_VERIFY(label->property("error").toBool());
    type("\b");
    QVERIFY(!label->property("error").toBool());
    m_calendar->setDateEditAcceptDelay(100000);
    calendarPart(m_view, "nextmonth")->click();
    QVERIFY(!isTyping());
    QVERIFY(m_chosen.isEmpty());

    type("5");
    click(m_days->viewport(), calendarCell(m_view, QDate(2024, 4, 17)).center());
    QCOMPARE(takeChosen(), QDate(2024, 4, 17));
    QVERIFY(!isTyping());
    type("5");
    m_view->hide();
    m_view->show();
    QVERIFY(!isTyping());
}

void KovaCalanderViewTest::returnChoosesWhatIsSeen()
{
    // The keys that walk choose nothing.
    press({Qt::Key_Home, Qt::Key_Up, Qt::Key_End});
    QCOMPARE(m_month->text(), "February");
    QVERIFY(m_chosen.isEmpty());
    press({Qt::Key_Return});
    QCOMPARE(takeChosen(), QDate(2024, 2, 29));
    press({Qt::Key_Right, Qt::Key_Space});
    QCOMPARE(takeChosen(), QDate(2024, 3, 1));

    calendarPart(m_view, "nextmonth")->setFocus();
    press({Qt::Key_Space, Qt::Key_Return});
    QCOMPARE(m_month->text(), "May");
    QVERIFY(m_chosen.isEmpty());
    m_days->setFocus();
    // A day at each edge of a page, by the number that stands in its cell.
    for (int month = 1; month <= 12; ++month) {
        for (int day : {1, 8, 15, 22, QDate(2023, month, 1).daysInMonth()}) {
            m_view->setSelectedDate(QDate(2023, month, day));
            m_view->setSelectedDate(QDate(2020, 1, day));
            m_view->setCurrentPage(2023, month);
            press({Qt::Key_Enter});
            QCOMPARE(takeChosen(), QDate(2023, month, day));
        }
    }
    calendarPart<QPushButton>(m_view, "today_button")->setFocus();
    press({Qt::Key_Return});
    QCOMPARE(takeChosen(), QDate::currentDate());
    QCOMPARE(m_calendar->selectedDate(), QDate::currentDate());
}

void KovaCalanderViewTest::monthAndYearByKeyboard()
{
    m_month->menu()->actions().at(2)->trigger(); // the month that is shown already
    QCOMPARE(m_month->text(), "March");
    m_month->setFocus();
    QTimer::singleShot(0, m_month->menu(), [this] {
        ::press(m_month->menu(), {Qt::Key_Down, Qt::Key_Return});
    });
    press({Qt::Key_Return});
    QCOMPARE(calendarPage(m_view), QDate(2024, 1, 1));

    const auto yearAfter = [this](std::initializer_list<int> keys) {
        calendarPart(m_view, "yearbutton")->setFocus();
        press({Qt::Key_Return});
        press(keys);
        return calendarPart(m_view, "yearbutton")->text();
    };
    QCOMPARE(yearAfter({Qt::Key_2, Qt::Key_0, Qt::Key_3, Qt::Key_1, Qt::Key_Return}), "2031");
    QCOMPARE(m_window->focusWidget(), m_days);
    QCOMPARE(yearAfter({Qt::Key_Up, Qt::Key_Tab}), "2032");
    QCOMPARE(m_window->focusWidget(), m_days);
    QCOMPARE(yearAfter({Qt::Key_9, Qt::Key_Escape}), "2032");
    QVERIFY(m_chosen.isEmpty());
    press({Qt::Key_Return});
    QCOMPARE(takeChosen(), QDate(2032, 1, 13));
}

void KovaCalanderViewTest::limitsKeepDaysFromBeingChosen()
{
    m_view->setMinimumDate(QDate(2024, 3, 8));
    m_view->setMaximumDate(QDate(2024, 3, 20));
    for (const QDate &date : {QDate(2024, 2, 28), QDate(2024, 3, 7), QDate(2024, 3, 21)}) {
        click(m_days->viewport(), calendarCell(m_view, date).center());
        m_view->setSelectedDate(date);
    }
    m_view->selectToday();
    QVERIFY(m_chosen.isEmpty());
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));
    press({Qt::Key_PageDown, Qt::Key_Return});
    QCOMPARE(takeChosen(), QDate(2024, 3, 20));

    // A page can be turned so that the cursor stands on a day that cannot be chosen.
    m_view->setMaximumDate(QDate(2024, 4, 10));
    m_view->setCurrentPage(2024, 4);
    press({Qt::Key_Return, Qt::Key_Space});
    QVERIFY(m_chosen.isEmpty());

    const auto *today = calendarPart<QPushButton>(m_view, "today_button");
    QVERIFY(!today->isEnabled());
    m_view->setMaximumDate(QDate::currentDate());
    click(today);
    QCOMPARE(takeChosen(), QDate::currentDate());
}

QTEST_MAIN(KovaCalanderViewTest)
#include "kova-calander-view-test.moc"
