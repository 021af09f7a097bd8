// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/calendar.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>

// The field with its calendar as a popup: what it shows, where and how the popup opens, how a date
// is chosen there or not, and what becomes of the focus.
class KovaDateSelectorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { delete m_window; }
    void showsWhatIsChosen();
    void showsItsWholeDate();
    void marksNothingWithoutADate();
    void choosesByMouse();
    void choosesByKeyboard();
    void closesWithoutChoosing();
    void clicksBesideTheDaysKeepItOpen();
    void opensFullyAtEveryEdge_data();
    void opensFullyAtEveryEdge();
    void clickEndsTheTypingOfTheYear();
    void survivesItsEndWhileOpen();

private:
    KovaCalanderView *view() const { return m_box->getCalendarView(); }
    QWidget *popup() const { return view()->window(); }
    bool isOpen() const { return popup()->isVisible(); }
    QDate chosen() const { return m_box->currentData().toDate(); }
    void open();
    void settle() const;
    void press(std::initializer_list<int> keys);
    void clickOn(const QWidget *widget, const QPoint &position);
    void clickOnDay(const QDate &date);

    QWidget *m_window = nullptr;
    QLineEdit *m_other = nullptr;
    QPointer<KovaDateSelector> m_box;
};

void KovaDateSelectorTest::init()
{
    m_window = new QWidget;
    auto *layout = new QVBoxLayout(m_window);
    m_other = new QLineEdit;
    m_box = new KovaDateSelector("Choose a date", m_window);
    layout->addWidget(m_box);
    layout->addStretch();
    layout->addWidget(m_other);
    showActive(m_window);
    m_box->setFocus();
}

// Nobody closes a popup before it can be seen; the window system complains when a test does.
void KovaDateSelectorTest::settle() const
{
    if (isOpen() && !QTest::qWaitForWindowExposed(popup()))
        qFatal("the calendar does not come up");
}

void KovaDateSelectorTest::open()
{
    m_box->showPopup();
    settle();
}

void KovaDateSelectorTest::press(std::initializer_list<int> keys)
{
    for (const int key : keys) {
        ::press(isOpen() ? popup() : m_window, {key});
        settle();
    }
}

void KovaDateSelectorTest::clickOn(const QWidget *widget, const QPoint &position)
{
    click(widget, position);
    settle();
}

void KovaDateSelectorTest::clickOnDay(const QDate &date)
{
    clickOn(calendarDays(view())->viewport(), calendarCell(view(), date).center());
}

void KovaDateSelectorTest::showsWhatIsChosen()
{
    QCOMPARE(m_box->currentText(), "Choose a date");
    QCOMPARE(m_box->currentData(), QVariant(QDate()));
    QCOMPARE(m_box->styleSheet(), getStyleSheet("component.date_selector", false)
                                      + getStyleSheet("component.menu", false));
    QList<QDate> changes;
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [&] { changes.append(chosen()); });
    m_box->dateSelect(QDate(2023, 3, 5));
    QCOMPARE(m_box->currentText(), "2023-03-05");
    QCOMPARE(changes, (QList<QDate>{QDate(), QDate(2023, 3, 5)}));
    QCOMPARE(calendarPage(view()), QDate(2023, 3, 1));

    // What the field shows is what Return chooses when the calendar is opened.
    open();
    press({Qt::Key_Return});
    QCOMPARE(chosen(), QDate(2023, 3, 5));

    open();
    m_box->dateSelect(QDate());
    QVERIFY(isOpen());
    QCOMPARE(m_box->currentText(), "Choose a date");
    QCOMPARE(calendarPage(view()), QDate(2023, 3, 1));
    m_box->hidePopup();

    // A date that no calendar shows.
    m_box->dateSelect(QDate(12000, 1, 1));
    QCOMPARE(chosen(), QDate(12000, 1, 1));
    open();
    press({Qt::Key_Return});
    QCOMPARE(chosen(), QDate(9999, 12, 31));
}

void KovaDateSelectorTest::showsItsWholeDate()
{
    auto *row = new QHBoxLayout;
    auto *box = new KovaDateSelector("To", nullptr);
    row->addWidget(new QLabel("To"));
    row->addWidget(box);
    row->addStretch();
    static_cast<QVBoxLayout *>(m_window->layout())->addLayout(row);
    m_window->resize(m_window->minimumSizeHint());
    for (const qreal factor : {1.0, 1.3}) {
        QFont font = box->font();
        font.setPointSizeF(font.pointSizeF() * factor);
        box->setFont(font);
        for (const QDate &date : {QDate(2000, 10, 20), QDate(2028, 8, 28), QDate(1111, 11, 11)}) {
            box->dateSelect(date);
            const int width = box->fontMetrics().horizontalAdvance(box->currentText());
            const auto room = [box] {
                QStyleOptionComboBox option;
                option.initFrom(box);
                return box->style()
                    ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField,
                                     box)
                    .width();
            };
            QTRY_VERIFY2(room() >= width && room() < width + box->height(),
                         qPrintable(box->currentText()));
        }
    }
}

void KovaDateSelectorTest::marksNothingWithoutADate()
{
    const auto *days = calendarDays(view());
    const auto marked = [&] {
        const QImage picture = days->viewport()->grab().toImage();
        const QColor fill = days->palette().color(QPalette::Highlight);
        QString numbers;
        for (int i = 0; i < 42; ++i) {
            const QModelIndex index = days->model()->index(i / 7, i % 7);
            const QRect cell = days->visualRect(index);
            if (picture.pixelColor(cell.left() + kovaPx(7), cell.center().y()) == fill)
                numbers += index.data().toString() + ' ';
        }
        return numbers.trimmed();
    };
    const auto ink = [this] { return m_box->palette().color(QPalette::Text); };
    const QColor emptyInk = ink();
    open();
    QCOMPARE(marked(), "");
    m_box->dateSelect(QDate(2024, 3, 13));
    QVERIFY(ink() != emptyInk);
    open();
    press({Qt::Key_Right});
    QCOMPARE(marked(), "13");
    press({Qt::Key_Escape});
    open();
    QCOMPARE(marked(), "13");
    m_box->dateSelect(QDate());
    QCOMPARE(marked(), "");
    QCOMPARE(ink(), emptyInk);
    m_box->hidePopup();

    // clearDate() takes the date away and turns the calendar to today, or to the last day that can
    // be chosen before it: Return chooses that one.
    const QDate last = QDate::currentDate().addMonths(-2);
    view()->setMaximumDate(last);
    m_box->dateSelect(last.addYears(-1));
    m_box->clearDate();
    QCOMPARE(m_box->currentText(), "Choose a date");
    open();
    QCOMPARE(marked(), "");
    press({Qt::Key_Return});
    QCOMPARE(chosen(), last);
    // QComboBox::clear(), which hosts may call on any box, takes the date away as well.
    m_box->clear();
    open();
    QCOMPARE(marked(), "");
    m_box->hidePopup();
}

void KovaDateSelectorTest::choosesByMouse()
{
    m_other->setFocus();
    view()->setCurrentPage(2024, 9); // begins on a Sunday
    clickOn(m_box, m_box->rect().center());
    clickOnDay(QDate(2024, 9, 10));
    QVERIFY(!isOpen());
    QCOMPARE(m_box->currentText(), "2024-09-10");
    QTRY_COMPARE(QApplication::focusWidget(), m_box);

    open();
    QSignalSpy choices(view(), &KovaCalanderView::sigDateSelect);
    doubleClickWhileBusy(calendarDays(view())->viewport(),
                         calendarCell(view(), QDate(2024, 9, 11)).center());
    QTRY_VERIFY(!isOpen());
    QCoreApplication::processEvents();
    QCOMPARE(choices.count(), 1);
}

void KovaDateSelectorTest::choosesByKeyboard()
{
    m_box->dateSelect(QDate(2024, 2, 28));
    for (const int opener :
         std::initializer_list<int>{Qt::Key_F4, Qt::Key_Space, Qt::ALT + Qt::Key_Down}) {
        press({opener});
        QVERIFY(isOpen());
        QTRY_COMPARE(QApplication::focusWidget(), calendarDays(view()));
        press({Qt::Key_Right, Qt::Key_Return});
        QVERIFY(!isOpen());
        QTRY_COMPARE(QApplication::focusWidget(), m_box);
    }
    QCOMPARE(m_box->currentText(), "2024-03-02");

    // The month and the year are turned inside the popup.
    press({Qt::Key_F4});
    calendarPart(view(), "nextmonth")->setFocus();
    press({Qt::Key_Return});
    calendarPart(view(), "yearbutton")->setFocus();
    press({Qt::Key_Space, Qt::Key_Up, Qt::Key_Return});
    QVERIFY(isOpen());
    press({Qt::Key_Return});
    QCOMPARE(m_box->currentText(), "2025-04-02");
}

void KovaDateSelectorTest::closesWithoutChoosing()
{
    for (const int closer : {Qt::Key_Escape, Qt::Key_F4}) {
        press({Qt::Key_F4, Qt::Key_Right, closer});
        QVERIFY(!isOpen());
        QTRY_COMPARE(QApplication::focusWidget(), m_box);
    }
    // Days that were walked over and left are forgotten.
    const QDate today = QDate::currentDate();
    press({Qt::Key_F4, Qt::Key_PageUp, Qt::Key_Escape});
    QCOMPARE(calendarPage(view()), QDate(today.year(), today.month(), 1));
    press({Qt::Key_F4, Qt::Key_Return});
    QCOMPARE(chosen(), today);
    m_box->clearDate();

    // The first Escape gives up the typing of a year or a date, the second one the choosing.
    for (const bool year : {true, false}) {
        press({Qt::Key_F4});
        if (year) {
            calendarPart(view(), "yearbutton")->setFocus();
            press({Qt::Key_Return});
        }
        press({Qt::Key_2, Qt::Key_Escape});
        QVERIFY(isOpen());
        press({Qt::Key_Escape});
        QVERIFY(!isOpen());
    }
    // A click on something else.
    m_other->setFocus();
    open();
    click(popup(), QPoint(popup()->width() + 20, popup()->height() + 20));
    QVERIFY(!isOpen());
    QCOMPARE(m_window->focusWidget(), m_box);
    QCOMPARE(m_box->currentText(), "Choose a date");
}

void KovaDateSelectorTest::clicksBesideTheDaysKeepItOpen()
{
    view()->setCurrentPage(2024, 9);
    view()->setMinimumDate(QDate(2024, 9, 20));
    view()->setMaximumDate(QDate(2024, 9, 24));
    open();
    clickOnDay(QDate(2024, 9, 9));
    clickOn(calendarPart<QWidget>(view(), "weekdayview"), QPoint(10, 10));
    clickOn(calendarPart<QWidget>(view(), "navigationbar"),
            calendarPart(view(), "prevmonth")->geometry().topRight() + QPoint(2, 5));
    clickOn(calendarPart<QPushButton>(view(), "today_button"), QPoint(5, 5)); // switched off
    clickOn(view(), QPoint(4, 4));
    clickOn(view(), QPoint(20, view()->height() - 12));
    QVERIFY(isOpen());
    QCOMPARE(m_box->currentText(), "Choose a date");
    m_box->hidePopup();
}

void KovaDateSelectorTest::opensFullyAtEveryEdge_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<bool>("mirrored");
    for (double x : {0.0, 0.5, 1.0}) {
        for (double y : {0.0, 0.5, 1.0}) {
            for (const bool mirrored : {false, true})
                QTest::addRow("%g %g %d", x, y, mirrored) << x << y << mirrored;
        }
    }
}

void KovaDateSelectorTest::opensFullyAtEveryEdge()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(bool, mirrored);
    const QRect area = m_window->screen()->availableGeometry();
    KovaDateSelector box("Choose a date", nullptr);
    box.setWindowFlag(Qt::X11BypassWindowManagerHint);
    box.setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
    // Wider than the calendar in the middle of the screen, and narrower at its edges.
    box.resize(kovaPx(x == 0.5 ? 500 : 160), box.height());
    box.move(area.left() + int(x * (area.width() - box.width())),
             area.top() + int(y * (area.height() - box.height())));
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));

    box.showPopup();
    QWidget *opened = box.getCalendarView()->window();
    const QRect shown = opened->geometry();
    const QRect field = box.geometry();
    QVERIFY(QTest::qWaitForWindowExposed(opened));
    QCOMPARE(opened->geometry(), shown);
    QVERIFY(area.contains(shown));
    QCOMPARE(shown.size(), QSize(kovaPx(280), kovaPx(260)).grownBy(opened->contentsMargins()));
    if (field.bottom() + shown.height() <= area.bottom())
        QCOMPARE(shown.top(), field.bottom() + 1);
    else if (field.top() - shown.height() >= area.top())
        QCOMPARE(shown.bottom(), field.top() - 1);
    if (x == 0.5)
        QCOMPARE(mirrored ? shown.right() : shown.left(), mirrored ? field.right() : field.left());
    box.hidePopup();
}

void KovaDateSelectorTest::clickEndsTheTypingOfTheYear()
{
    m_box->dateSelect(QDate(2024, 3, 13));
    open();
    clickOn(calendarPart(view(), "yearbutton"), QPoint(5, 5));
    QVERIFY(calendarPart<QSpinBox>(view(), "yearedit")->isVisible());
    m_box->hidePopup();
    open();
    QVERIFY(!calendarPart<QSpinBox>(view(), "yearedit")->isVisible());
    QTRY_COMPARE(QApplication::focusWidget(), calendarDays(view()));
    clickOn(calendarPart(view(), "yearbutton"), QPoint(5, 5));
    press({Qt::Key_1, Qt::Key_9, Qt::Key_8, Qt::Key_7});
    clickOnDay(QDate(2024, 3, 13));
    QVERIFY(isOpen());
    QCOMPARE(m_box->currentText(), "2024-03-13");
    QCOMPARE(calendarPage(view()), QDate(1987, 3, 1));
    clickOnDay(QDate(1987, 3, 11));
    QCOMPARE(m_box->currentText(), "1987-03-11");
}

void KovaDateSelectorTest::survivesItsEndWhileOpen()
{
    open();
    clickOn(calendarPart(view(), "yearbutton"), QPoint(5, 5));
    delete m_box;
    QVERIFY(!QApplication::activePopupWidget());

    m_box = new KovaDateSelector(QString(), m_window);
    m_box->show();
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), m_box, [this](int index) {
        if (index == 0)
            m_box->deleteLater();
    });
    open();
    // The release would come too late for the window.
    QTest::keyPress(popup()->windowHandle(), Qt::Key_Return);
    QTRY_VERIFY(!m_box);

    KovaDateSelector box(QString(), nullptr);
    box.show();
    box.showPopup();
    box.close();
}

QTEST_MAIN(KovaDateSelectorTest)
#include "kova-date-selector-test.moc"
