#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QRandomGenerator>
#include <QtTest>
#include <QtWidgets>

#include <functional>

class KovaCalanderViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { delete m_window; }
    void showsTheTextsOfTheHost();
    void monthMenuTellsMonthsApart();
    void daysHaveMarks();
    void weekdaysStandOverTheirDays();
    void monthNamesFitInEveryLanguage();
    void turnsToMonthsThatExist();
    void localeChangesNothing();
    void tabWalksThroughTheParts();
    void daysByKeyboard();
    void digitsMeanADate_data();
    void digitsMeanADate();
    void typingEnds();
    void returnChoosesWhatIsSeen();
    void monthAndYearByKeyboard();
    void daysOutsideTheLimits();
    void todayOutsideTheLimits();
    void survivesAnyDates();

private:
    void press(int key, Qt::KeyboardModifiers modifiers = {}) { ::press(m_window, key, modifiers); }
    template<class Part = QToolButton>
    Part *part(const QString &name) const
    {
        return m_view->findChild<Part *>("qt_calendar_" + name);
    }
    QDate takeChosen() { return m_chosen.isEmpty() ? QDate() : m_chosen.takeFirst(); }
    QDate page() const { return {m_calendar->yearShown(), m_calendar->monthShown(), 1}; }
    QPoint cellOf(const QDate &date) const;
    QImage pictureOf(const QDate &date) const;
    void type(const QString &text);
    QWidget *focused() const { return m_window->focusWidget(); }

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
    m_view->setFixedSize(kovaPx(280), kovaPx(260));
    layout->addWidget(m_view);
    m_calendar = m_view->findChild<QCalendarWidget *>();
    m_days = part<QTableView>("calendarview");
    m_month = part("monthbutton");
    m_chosen.clear();
    connect(m_view, &KovaCalanderView::sigDateSelect, m_view,
            [this](const QDate &date) { m_chosen.append(date); });
    showActive(m_window);
    m_view->setSelectedDate(QDate(2024, 3, 13));
    m_days->setFocus();
}

// The middle of the day's cell in the grid; weeks begin on Sunday.
QPoint KovaCalanderViewTest::cellOf(const QDate &date) const
{
    const int column = page().dayOfWeek() % 7;
    // A month that begins on a Sunday leaves the first row to the month before it.
    const int position = int(page().daysTo(date)) + (column ? column : 7);
    return m_days->visualRect(m_days->model()->index(position / 7, position % 7)).center();
}

void KovaCalanderViewTest::showsTheTextsOfTheHost()
{
    const KovaCalanderView view(nullptr);
    QCOMPARE(view.findChild<QToolButton *>("qt_calendar_monthbutton")->text(),
             QLocale::c().monthName(QDate::currentDate().month()));
    QStringList entries;
    for (const QAction *action : m_month->menu()->actions())
        entries.append(action->text());
    QCOMPARE(entries.join(" "), "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec");
    QCOMPARE(part<QPushButton>("today_button")->text(), "Today");
    QCOMPARE(spoken(m_view), "Calendar");
    QCOMPARE(spoken(part("prevmonth")), "Previous month");
    QCOMPARE(spoken(part("nextmonth")), "Next month");
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        QCOMPARE(m_calendar->weekdayTextFormat(day).foreground().color(), QColor(Qt::black));
}

void KovaCalanderViewTest::monthMenuTellsMonthsApart()
{
    installThemeStrings("fra");
    KovaCalanderView view(nullptr);
    installThemeStrings("enu");
    view.setCurrentPage(2024, 1);
    QMenu *menu = view.findChild<QToolButton *>("qt_calendar_monthbutton")->menu();
    QVERIFY(menu->toolTipsVisible());
    QAccessibleInterface *spokenMenu = QAccessible::queryAccessibleInterface(menu);
    QStringList names;
    for (int i = 5; i < 7; ++i) {
        const QAction *action = menu->actions().at(i);
        QCOMPARE(action->text(), "jui");
        QAccessibleInterface *entry = spokenMenu->child(i);
        QCOMPARE(entry->text(QAccessible::Name), action->toolTip());
        QCOMPARE(entry->role(), QAccessible::MenuItem);
        QCOMPARE(entry->childCount(), 0);
        QCOMPARE(spokenMenu->indexOfChild(entry), i);
        names.append(action->toolTip());
    }
    QCOMPARE(names, (QStringList{"juin", "juillet"}));

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
    QCOMPARE(view.findChild<QToolButton *>("qt_calendar_monthbutton")->text(), "juillet");
}

QImage KovaCalanderViewTest::pictureOf(const QDate &date) const
{
    const QRect cell = m_days->visualRect(m_days->indexAt(cellOf(date)));
    return m_days->viewport()->grab(cell).toImage();
}

void KovaCalanderViewTest::daysHaveMarks()
{
    const QDate today = QDate::currentDate();
    const QDate first(today.year(), today.month(), 1);
    const QDate other = today == first ? first.addDays(1) : first;
    const QDate walkedTo = first.addDays(20) == today ? first.addDays(21) : first.addDays(20);
    m_view->setStyleSheet(getStyleSheet("component.date_selector", false));
    m_view->setTodayColor(Qt::magenta);
    m_view->setOtherMonthColor(Qt::green);
    m_view->setSelectedDate(other);
    m_calendar->setSelectedDate(walkedTo);
    const QPalette colors = m_days->palette();
    // The share of the cell, in percent, that has exactly this color.
    const auto share = [this](const QDate &date, const QColor &color) {
        const QImage picture = pictureOf(date);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == color;
        }
        return 100 * count / (picture.width() * picture.height());
    };
    const QColor fill = colors.color(QPalette::Highlight);
    QVERIFY(share(other, fill) > 50);
    QVERIFY(share(walkedTo, fill) > 8 && share(walkedTo, fill) < 30);
    QVERIFY(share(today, Qt::magenta) > 0);
    QCOMPARE(share(today, fill), 0);

    // The pointer tints a day that can be chosen, and leaves no tint behind.
    const QColor tint = colors.color(QPalette::AlternateBase);
    const QDate pointed = walkedTo.addDays(walkedTo.addDays(1) == today ? 2 : 1);
    const auto pointAt = [this](const QDate &date) {
        const QPoint place = m_days->viewport()->mapTo(m_window, cellOf(date));
        QTest::mouseMove(m_window->windowHandle(), place);
    };
    pointAt(pointed);
    QVERIFY(share(pointed, tint) > 50);
    pointAt(other);
    QCOMPARE(share(pointed, tint), 0);
    pointAt(pointed);
    QTest::mouseMove(m_window->windowHandle(), QPoint(1, 1));
    QCOMPARE(share(pointed, tint), 0);

    // Other months, and days out of reach, have an ink of their own. The most pixels of it that a
    // row of the cell has tell a number from the line through it.
    const auto inked = [&](const QDate &date, const QColor &color) {
        const QImage picture = pictureOf(date);
        int most = 0;
        for (int y = 0; y < picture.height(); ++y) {
            int count = 0;
            for (int x = 0; x < picture.width(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                count += qAbs(pixel.red() - color.red()) + qAbs(pixel.green() - color.green())
                           + qAbs(pixel.blue() - color.blue())
                       < 190;
            }
            most = qMax(most, count);
        }
        return most;
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
    const auto *row = part<QTableWidget>("weekdayview");
    QCOMPARE(row->styleSheet(), getStyleSheet("component.table", false));
    QCOMPARE(row->horizontalHeader()->styleSheet(), getStyleSheet("component.table_header", false));
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
            QCOMPARE(row->columnWidth(column), m_days->columnWidth(column));
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
    const QStringList languages = QDir(themeFolder() + "/strings").entryList({"*.json"});
    QCOMPARE(languages.size(), 20);
    for (const QString &language : languages) {
        installThemeStrings(language.section('.', 0, 0));
        KovaCalanderView view(nullptr);
        view.setStyleSheet(getStyleSheet("component.date_selector", false));
        view.setFixedSize(kovaPx(280), kovaPx(260));
        view.show();
        const auto *bar = view.findChild<QWidget *>("qt_calendar_navigationbar");
        const auto *button = view.findChild<QToolButton *>("qt_calendar_monthbutton");
        const auto *next = view.findChild<QToolButton *>("qt_calendar_nextmonth");
        const int width = button->width();
        for (int month = 1; month <= 12; ++month) {
            view.setCurrentPage(2024, month);
            QCoreApplication::sendPostedEvents();
            QCOMPARE(button->width(), width);
            QVERIFY2(width >= button->sizeHint().width(), qPrintable(button->text()));
            QVERIFY2(bar->rect().contains(next->geometry()), qPrintable(button->text()));
        }
    }
    installThemeStrings("enu");
}

void KovaCalanderViewTest::turnsToMonthsThatExist()
{
    const auto pageAfter = [this](int year, int month) {
        m_view->setCurrentPage(year, month);
        return page();
    };
    QCOMPARE(pageAfter(2031, 2), QDate(2031, 2, 1));
    QCOMPARE(m_month->text(), "February");
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));
    QCOMPARE(pageAfter(2024, 0), QDate(2031, 2, 1));
    QCOMPARE(pageAfter(2024, 13), QDate(2031, 2, 1));
    QCOMPARE(pageAfter(12000, 5), QDate(9999, 12, 1));
    m_view->setMaximumDate(QDate(2025, 6, 3));
    QCOMPARE(pageAfter(2030, 1), QDate(2025, 6, 1));
}

void KovaCalanderViewTest::localeChangesNothing()
{
    m_window->setLocale(QLocale(QLocale::German));
    QCOMPARE(m_calendar->firstDayOfWeek(), Qt::Sunday);
    QCOMPARE(m_month->text(), "March");
    QCOMPARE(m_month->menu()->actions().at(4)->text(), "May");
    // The direction of writing turns the arrows around.
    const auto icon = [this](const char *name) { return part(name)->icon().pixmap(100).toImage(); };
    const QImage backward = icon("prevmonth");
    QCOMPARE(backward, getGlobalImage("bt_pagebar_backend", ImageManager::Default).toImage());
    const QImage forward = icon("nextmonth");
    QVERIFY(forward != backward);
    m_window->setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(icon("prevmonth"), forward);
    QCOMPARE(icon("nextmonth"), backward);
}

void KovaCalanderViewTest::tabWalksThroughTheParts()
{
    const QList<QWidget *> chain = {m_view,
                                    part("prevmonth"),
                                    part("nextmonth"),
                                    m_month,
                                    part("yearbutton"),
                                    m_days,
                                    part<QPushButton>("today_button")};
    m_view->setStyleSheet(getStyleSheet("component.date_selector", false));
    m_view->setFocus();
    for (int i = 1; i <= 2 * chain.size(); ++i) {
        press(Qt::Key_Tab);
        QWidget *next = focused();
        QCOMPARE(next, chain.at(i % chain.size()));
        const QImage picture = next->grab().toImage();
        next->clearFocus();
        QVERIFY2(next->grab().toImage() != picture, next->metaObject()->className());
        next->setFocus();
    }
    for (int i = 2 * chain.size() - 1; i >= 0; --i) {
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(focused(), chain.at(i % chain.size()));
    }
}

void KovaCalanderViewTest::daysByKeyboard()
{
    // The keys that walk choose nothing.
    for (int key : {Qt::Key_Home, Qt::Key_Up, Qt::Key_End})
        press(key);
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 2, 29));
    QCOMPARE(m_month->text(), "February");
    QVERIFY(m_chosen.isEmpty());
    press(Qt::Key_Return);
    QCOMPARE(takeChosen(), QDate(2024, 2, 29));
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    QCOMPARE(takeChosen(), QDate(2024, 3, 1));
    for (int key : {Qt::Key_1, Qt::Key_7, Qt::Key_Enter})
        press(key);
    QCOMPARE(takeChosen(), QDate(2024, 3, 17));
    QVERIFY(m_chosen.isEmpty());
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
    row("de", "05", QDate(2024, 3, 5), "<b>05</b>.03.2024");
    row("en_US", "05", QDate(2024, 3, 5), "03/<b>05</b>/2024");
    row("ja", "05", QDate(2024, 3, 5), "2024/03/<b>05</b>");
    row("de", "07042031", QDate(2031, 4, 7), "<b>07</b>.<b>04</b>.<b>2031</b>");
    row("en_US", "07042031", QDate(2031, 7, 4), "<b>07</b>/<b>04</b>/<b>2031</b>");
    row("ja", "20310407", QDate(2031, 4, 7), "<b>2031</b>/<b>04</b>/<b>07</b>");
    row("C", "07042031", QDate(2031, 4, 7), "<b>07</b> <b>04</b> <b>2031</b>");
    row("es", "0704", QDate(2024, 4, 7), "<b>07</b>/<b>04</b>/2024");
    row("en_US", "0704", QDate(2024, 7, 4), "<b>07</b>/<b>04</b>/2024");
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
            press(Qt::Key_Backspace);
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
    const auto *label = part<QLabel>("typed_date");
    type(typed);
    QVERIFY(label->isVisible() && m_days->geometry().contains(label->geometry()));
    QTEST(label->text(), "shown");
    press(Qt::Key_Return);
    QCOMPARE(takeChosen(), date);
    QCOMPARE(label->isVisible(), !date.isValid());
    QCOMPARE(label->property("error").toBool(), !date.isValid());
    press(Qt::Key_Escape);
    QVERIFY(!label->isVisible());
    QCOMPARE(page(), date.isValid() ? QDate(date.year(), date.month(), 1) : QDate(2024, 3, 1));
}

void KovaCalanderViewTest::typingEnds()
{
    const auto *label = part<QLabel>("typed_date");
    const auto isTyping = [&] { return label->isVisible(); };
    // What is no part of a date is none of its business.
    type("x.");
    press(Qt::Key_5, Qt::ControlModifier);
    QVERIFY(!isTyping());
    type("5\b");
    QVERIFY(!isTyping());

    type("5");
    press(Qt::Key_Escape);
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));
    type("0504");
    press(Qt::Key_PageDown);
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 5, 5));
    type("0703");
    press(Qt::Key_Home);
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 1));
    type("8");
    press(Qt::Key_Tab);
    QVERIFY(!isTyping());
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 8));
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
    part("nextmonth")->click();
    QVERIFY(!isTyping());
    QVERIFY(m_chosen.isEmpty());

    type("5");
    click(m_days->viewport(), cellOf(QDate(2024, 4, 17)));
    QCOMPARE(takeChosen(), QDate(2024, 4, 17));
    QVERIFY(!isTyping());
    type("5");
    m_view->hide();
    m_view->show();
    QVERIFY(!isTyping());
}

void KovaCalanderViewTest::returnChoosesWhatIsSeen()
{
    part("nextmonth")->setFocus();
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    QCOMPARE(m_month->text(), "May");
    QVERIFY(m_chosen.isEmpty());
    m_days->setFocus();
    press(Qt::Key_Return);
    QCOMPARE(takeChosen(), QDate(2024, 5, 13));

    // The same for a day at each edge of a page, by the number that stands in its cell.
    for (int month = 1; month <= 12; ++month) {
        for (int day : {1, 8, 15, 22, QDate(2023, month, 1).daysInMonth()}) {
            m_view->setSelectedDate(QDate(2023, month, day));
            m_view->setSelectedDate(QDate(2020, 1, day));
            m_view->setCurrentPage(2023, month);
            press(Qt::Key_Return);
            QCOMPARE(takeChosen(), QDate(2023, month, day));
        }
    }
    part<QPushButton>("today_button")->setFocus();
    press(Qt::Key_Return);
    QCOMPARE(takeChosen(), QDate::currentDate());
    QCOMPARE(m_calendar->selectedDate(), QDate::currentDate());
}

void KovaCalanderViewTest::monthAndYearByKeyboard()
{
    m_month->menu()->actions().at(2)->trigger(); // the month that is shown already
    QCOMPARE(m_month->text(), "March");
    m_month->setFocus();
    QTimer::singleShot(0, m_month->menu(), [this] {
        ::press(m_month->menu(), Qt::Key_Down);
        ::press(m_month->menu(), Qt::Key_Return);
    });
    press(Qt::Key_Return);
    QCOMPARE(m_month->text(), "January");
    QCOMPARE(m_calendar->monthShown(), 1);

    const auto type = [this](std::initializer_list<int> keys) {
        part("yearbutton")->setFocus();
        press(Qt::Key_Return);
        for (int key : keys)
            press(key);
        return part("yearbutton")->text();
    };
    QCOMPARE(type({Qt::Key_2, Qt::Key_0, Qt::Key_3, Qt::Key_1, Qt::Key_Return}), "2031");
    QCOMPARE(focused(), m_days);
    QCOMPARE(type({Qt::Key_Up, Qt::Key_Tab}), "2032");
    QCOMPARE(focused(), m_days);
    QCOMPARE(type({Qt::Key_9, Qt::Key_Escape}), "2032");
    QVERIFY(m_chosen.isEmpty());
    press(Qt::Key_Return);
    QCOMPARE(takeChosen(), QDate(2032, 1, 13));
}

void KovaCalanderViewTest::daysOutsideTheLimits()
{
    m_view->setMinimumDate(QDate(2024, 3, 8));
    m_view->setMaximumDate(QDate(2024, 3, 20));
    for (const QDate &date : {QDate(2024, 2, 28), QDate(2024, 3, 7), QDate(2024, 3, 21)}) {
        click(m_days->viewport(), cellOf(date));
        m_view->setSelectedDate(date);
    }
    QVERIFY(m_chosen.isEmpty());
    QCOMPARE(m_calendar->selectedDate(), QDate(2024, 3, 13));
    press(Qt::Key_PageDown);
    press(Qt::Key_Return);
    QCOMPARE(takeChosen(), QDate(2024, 3, 20));

    // A page can be turned so that the cursor stands on a day that cannot be chosen.
    m_view->setMaximumDate(QDate(2024, 4, 10));
    m_view->setCurrentPage(2024, 4);
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    QVERIFY(m_chosen.isEmpty());
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    QCOMPARE(takeChosen(), QDate(2024, 4, 10));
}

void KovaCalanderViewTest::todayOutsideTheLimits()
{
    const auto *today = part<QPushButton>("today_button");
    m_view->setMaximumDate(QDate::currentDate().addDays(-1));
    QVERIFY(!today->isEnabled());
    m_view->selectToday();
    QVERIFY(m_chosen.isEmpty());
    m_view->setMaximumDate(QDate::currentDate());
    click(today);
    QCOMPARE(takeChosen(), QDate::currentDate());
}

void KovaCalanderViewTest::survivesAnyDates()
{
    QRandomGenerator random(7);
    const std::function<void(const QDate &)> steps[] = {
        [this](const QDate &date) { m_view->setMinimumDate(date); },
        [this](const QDate &date) { m_view->setMaximumDate(date); },
        [this](const QDate &date) { m_view->setSelectedDate(date); },
        [&](const QDate &date) { m_view->setCurrentPage(date.year(), int(random.bounded(15))); },
        [this](const QDate &) { part("prevmonth")->click(); },
        [this](const QDate &) { part("nextmonth")->click(); },
        [this](const QDate &) { press(Qt::Key_PageDown); },
        [this](const QDate &) { press(Qt::Key_Return); }};
    for (int i = 0; i < 500; ++i) {
        QDate date;
        if (random.bounded(8) > 0)
            date.setDate(int(random.bounded(-6000, 14000)), 1 + int(random.bounded(12)), 28);
        steps[random.bounded(int(std::size(steps)))](date);
        QVERIFY(page().isValid() && page().year() >= 1 && page().year() <= 9999);
        QCOMPARE(part("yearbutton")->text(), QString::number(page().year()));
        QCOMPARE(m_month->text(), QLocale::c().monthName(page().month()));
        QVERIFY(m_calendar->minimumDate() <= m_calendar->maximumDate());
        QVERIFY(m_days->currentIndex().isValid());
    }
    for (const QDate &date : qAsConst(m_chosen))
        QVERIFY(date.isValid());
}

QTEST_MAIN(KovaCalanderViewTest)
#include "kova-calander-view-test.moc"
