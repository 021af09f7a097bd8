#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QCalendarWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

namespace {

const QString placeholder = QStringLiteral("Choose a date");

} // namespace

class KovaDateSelectorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup();
    void showsThePlaceholderAtFirst();
    void showsWhatIsChosen();
    void choosesByMouse();
    void choosesByKeyboard();
    void closesByKeyboard();
    void clicksBesideTheDaysKeepItOpen();
    void clickOutsideClosesIt();
    void opensFullyAtEveryEdge_data();
    void opensFullyAtEveryEdge();
    void isAsWideAsTheCalendar();
    void yearEditDoesNotOutliveThePopup();
    void rangesLimitEachOther();
    void survivesAnyDates();
    void survivesItsEndWhileOpen();

private:
    QWidget *popup() const { return m_box->getCalendarView()->window(); }
    bool isOpen() const { return popup()->isVisible(); }
    void open();
    void settle() const;
    void press(int key, Qt::KeyboardModifiers modifiers = {});
    void click(QWidget *widget, const QPoint &position);
    QPoint dayInFirstFullRow(int column) const;
    template<class Part>
    Part *part(const char *name) const
    {
        return popup()->findChild<Part *>(QLatin1String("qt_calendar_") + QLatin1String(name));
    }

    QWidget *m_window = nullptr;
    QLineEdit *m_other = nullptr;
    QPointer<KovaDateSelector> m_box;
};

void KovaDateSelectorTest::init()
{
    m_window = new QWidget;
    auto *layout = new QVBoxLayout(m_window);
    m_other = new QLineEdit;
    m_box = new KovaDateSelector(placeholder, m_window);
    layout->addWidget(m_box);
    layout->addStretch();
    layout->addWidget(m_other);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    m_box->setFocus();
}

void KovaDateSelectorTest::cleanup()
{
    delete m_window;
}

// Nobody closes a popup before it can be seen; the window system complains when a test does.
void KovaDateSelectorTest::settle() const
{
    if (isOpen())
        QVERIFY(QTest::qWaitForWindowExposed(popup()));
}

void KovaDateSelectorTest::open()
{
    m_box->showPopup();
    settle();
}

void KovaDateSelectorTest::press(int key, Qt::KeyboardModifiers modifiers)
{
    const QWidget *window = isOpen() ? popup() : m_window;
    QTest::keyClick(window->windowHandle(), Qt::Key(key), modifiers);
    settle();
}

void KovaDateSelectorTest::click(QWidget *widget, const QPoint &position)
{
    QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {},
                      widget->mapTo(widget->window(), position));
    settle();
}

// The middle of a cell in the third row, which is always in the month that is shown.
QPoint KovaDateSelectorTest::dayInFirstFullRow(int column) const
{
    const auto *days = part<QTableView>("calendarview");
    return days->visualRect(days->model()->index(2, column)).center();
}

void KovaDateSelectorTest::showsThePlaceholderAtFirst()
{
    QCOMPARE(m_box->currentText(), placeholder);
    QCOMPARE(m_box->count(), 1);
    QCOMPARE(m_box->currentData(), QVariant(QDate()));
    QCOMPARE(m_box->height(), kovaPx(32));
    QCOMPARE(m_box->view(), m_box->getCalendarView());
    QCOMPARE(m_box->styleSheet(), getStyleSheet("component.date_selector", false)
                                      + getStyleSheet("component.menu", false));
}

void KovaDateSelectorTest::showsWhatIsChosen()
{
    QList<QPair<int, QDate>> changes;
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [&](int index) {
        changes.append({index, m_box->currentData().toDate()});
    });
    m_box->dateSelect(QDate(2023, 3, 5));
    QCOMPARE(m_box->currentText(), QStringLiteral("2023-03-05"));
    QCOMPARE(changes, (QList<QPair<int, QDate>>{{-1, QDate()}, {0, QDate(2023, 3, 5)}}));
    const auto *calendar = popup()->findChild<QCalendarWidget *>();
    QCOMPARE(calendar->yearShown(), 2023);
    QCOMPARE(calendar->monthShown(), 3);
    QCOMPARE(m_box->count(), 1);

    // What the field shows is what Return chooses when the calendar is opened.
    open();
    press(Qt::Key_Return);
    QCOMPARE(m_box->currentData().toDate(), QDate(2023, 3, 5));

    open();
    m_box->dateSelect(QDate());
    QVERIFY(isOpen());
    QCOMPARE(m_box->currentText(), placeholder);
    QCOMPARE(m_box->currentData(), QVariant(QDate()));
    QCOMPARE(calendar->yearShown(), 2023);
    m_box->hidePopup();

    m_box->dateSelect(QDate(2023, 3, 5));
    m_box->clearDate();
    QCOMPARE(m_box->currentText(), placeholder);
    QVERIFY(m_box->currentData().toDate().isNull());
    QCOMPARE(calendar->yearShown(), QDate::currentDate().year());
    QCOMPARE(calendar->monthShown(), QDate::currentDate().month());
}

void KovaDateSelectorTest::choosesByMouse()
{
    m_other->setFocus();
    m_box->getCalendarView()->setCurrentPage(2024, 9); // begins on a Sunday
    click(m_box, m_box->rect().center());
    QVERIFY(isOpen());
    click(part<QTableView>("calendarview")->viewport(), dayInFirstFullRow(2));
    QVERIFY(!isOpen());
    QCOMPARE(m_box->currentText(), QStringLiteral("2024-09-10"));
    QCOMPARE(QApplication::focusWidget(), m_box);

    click(m_box, m_box->rect().center());
    click(part<QPushButton>("today_button"), QPoint(5, 5));
    QVERIFY(!isOpen());
    QCOMPARE(m_box->currentData().toDate(), QDate::currentDate());
}

void KovaDateSelectorTest::choosesByKeyboard()
{
    m_box->dateSelect(QDate(2024, 2, 28));
    struct Opener
    {
        int key;
        Qt::KeyboardModifiers modifiers;
    };
    for (const Opener &opener : {Opener{Qt::Key_F4, {}}, Opener{Qt::Key_Space, {}},
                                 Opener{Qt::Key_Down, Qt::AltModifier}}) {
        press(opener.key, opener.modifiers);
        QVERIFY(isOpen());
        QCOMPARE(QApplication::focusWidget(), part<QTableView>("calendarview"));
        press(Qt::Key_Right);
        press(Qt::Key_Return);
        QVERIFY(!isOpen());
        QCOMPARE(QApplication::focusWidget(), m_box);
    }
    QCOMPARE(m_box->currentText(), QStringLiteral("2024-03-02"));

    // Month, year and today from inside the popup.
    press(Qt::Key_F4);
    part<QToolButton>("nextmonth")->setFocus();
    press(Qt::Key_Return);
    QVERIFY(isOpen());
    part<QToolButton>("yearbutton")->setFocus();
    press(Qt::Key_Space);
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    QVERIFY(isOpen());
    press(Qt::Key_Return);
    QCOMPARE(m_box->currentText(), QStringLiteral("2025-04-02"));
    press(Qt::Key_F4);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    QCOMPARE(m_box->currentData().toDate(), QDate::currentDate());
    QVERIFY(!isOpen());
}

void KovaDateSelectorTest::closesByKeyboard()
{
    m_box->dateSelect(QDate(2024, 2, 28));
    for (int closer : {Qt::Key_Escape, Qt::Key_F4}) {
        press(Qt::Key_F4);
        press(Qt::Key_Right);
        press(closer);
        QVERIFY(!isOpen());
        QCOMPARE(QApplication::focusWidget(), m_box);
    }
    QCOMPARE(m_box->currentText(), QStringLiteral("2024-02-28"));

    // The first Escape gives up the typing, the second one the choosing.
    for (const char *typing : {"year", "date"}) {
        press(Qt::Key_F4);
        if (*typing == 'y') {
            part<QToolButton>("yearbutton")->setFocus();
            press(Qt::Key_Return);
        }
        press(Qt::Key_2);
        press(Qt::Key_Escape);
        QVERIFY2(isOpen(), typing);
        press(Qt::Key_Escape);
        QVERIFY2(!isOpen(), typing);
    }
    QCOMPARE(m_box->currentText(), QStringLiteral("2024-02-28"));
}

void KovaDateSelectorTest::clicksBesideTheDaysKeepItOpen()
{
    KovaCalanderView *view = m_box->getCalendarView();
    view->setCurrentPage(2024, 9);
    view->setMinimumDate(QDate(2024, 9, 20));
    view->setMaximumDate(QDate(2024, 9, 24));
    open();
    click(part<QTableView>("calendarview")->viewport(), dayInFirstFullRow(1));
    click(part<QWidget>("weekdayview"), QPoint(10, 10));
    click(part<QWidget>("navigationbar"),
          part<QToolButton>("prevmonth")->geometry().topRight() + QPoint(2, 5));
    click(part<QPushButton>("today_button"), QPoint(5, 5)); // switched off
    click(view, QPoint(4, 4));
    click(view, QPoint(20, view->height() - 12));
    QVERIFY(isOpen());
    QCOMPARE(m_box->currentText(), placeholder);
    m_box->hidePopup();
}

void KovaDateSelectorTest::clickOutsideClosesIt()
{
    m_other->setFocus();
    open();
    QTest::mouseClick(popup()->windowHandle(), Qt::LeftButton, {},
                      QPoint(popup()->width() + 20, popup()->height() + 20));
    QVERIFY(!isOpen());
    QCOMPARE(m_window->focusWidget(), m_box);
    QCOMPARE(m_box->currentText(), placeholder);
}

void KovaDateSelectorTest::opensFullyAtEveryEdge_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<bool>("mirrored");
    for (double x : {0.0, 0.5, 1.0}) {
        for (double y : {0.0, 0.5, 1.0}) {
            for (bool mirrored : {false, true})
                QTest::addRow("%g %g %d", x, y, int(mirrored)) << x << y << mirrored;
        }
    }
}

void KovaDateSelectorTest::opensFullyAtEveryEdge()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(bool, mirrored);
    const QRect area = m_window->screen()->availableGeometry();
    QWidget bare(nullptr, Qt::X11BypassWindowManagerHint);
    bare.setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
    KovaDateSelector box(placeholder, &bare);
    box.resize(kovaPx(160), box.height());
    bare.resize(box.size());
    bare.move(area.left() + int(x * (area.width() - bare.width())),
              area.top() + int(y * (area.height() - bare.height())));
    bare.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bare));

    box.showPopup();
    const QWidget *view = box.getCalendarView();
    const QRect shown = view->window()->geometry();
    const QRect field(box.mapToGlobal(QPoint()), box.size());
    QVERIFY(QTest::qWaitForWindowExposed(view->window()));
    QCOMPARE(view->window()->geometry(), shown);
    QVERIFY(area.contains(shown));
    QCOMPARE(view->size(), QSize(kovaPx(280), kovaPx(260)));
    const bool fitsBelow = field.bottom() + shown.height() <= area.bottom();
    const bool fitsAbove = field.top() - shown.height() >= area.top();
    if (fitsBelow)
        QCOMPARE(shown.top(), field.bottom() + 1);
    else if (fitsAbove)
        QCOMPARE(shown.bottom(), field.top() - 1);
    if (x == 0.5)
        QCOMPARE(mirrored ? shown.right() : shown.left(), mirrored ? field.right() : field.left());
    box.hidePopup();
}

void KovaDateSelectorTest::isAsWideAsTheCalendar()
{
    m_window->resize(kovaPx(600), kovaPx(200));
    QTRY_VERIFY(m_box->width() > kovaPx(500));
    open();
    QCOMPARE(popup()->width() - m_box->getCalendarView()->width(),
             popup()->height() - m_box->getCalendarView()->height());
    const QMargins frame = popup()->contentsMargins();
    QCOMPARE(popup()->size(), m_box->getCalendarView()->size().grownBy(frame));
    QCOMPARE(m_box->getCalendarView()->pos(), QPoint(frame.left(), frame.top()));
    m_box->hidePopup();
}

void KovaDateSelectorTest::yearEditDoesNotOutliveThePopup()
{
    open();
    click(part<QToolButton>("yearbutton"), QPoint(5, 5));
    QVERIFY(part<QSpinBox>("yearedit")->isVisible());
    m_box->hidePopup();
    open();
    QVERIFY(!part<QSpinBox>("yearedit")->isVisible());
    QVERIFY(part<QToolButton>("yearbutton")->isVisible());
    QCOMPARE(QApplication::focusWidget(), part<QTableView>("calendarview"));
    open();
    m_box->hidePopup();
    QCOMPARE(QApplication::focusWidget(), m_box);
}

void KovaDateSelectorTest::rangesLimitEachOther()
{
    KovaDateSelector to(QStringLiteral("to"), m_window);
    const auto limit = [&] {
        if (const QDate from = m_box->currentData().toDate(); from.isValid())
            to.getCalendarView()->setMinimumDate(from);
        if (const QDate until = to.currentData().toDate(); until.isValid())
            m_box->getCalendarView()->setMaximumDate(until);
    };
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, limit);
    connect(&to, QOverload<int>::of(&QComboBox::currentIndexChanged), this, limit);
    to.dateSelect(QDate(2024, 9, 17));
    m_box->getCalendarView()->setCurrentPage(2024, 9);
    open();
    click(part<QTableView>("calendarview")->viewport(), dayInFirstFullRow(3));
    QCOMPARE(m_box->currentText(), QStringLiteral("2024-09-11"));
    const auto *calendar = to.findChild<QCalendarWidget *>();
    QCOMPARE(calendar->minimumDate(), QDate(2024, 9, 11));
    QCOMPARE(to.currentText(), QStringLiteral("2024-09-17"));
}

void KovaDateSelectorTest::survivesAnyDates()
{
    KovaCalanderView *view = m_box->getCalendarView();
    for (const QDate &date : {QDate(-5, 3, 1), QDate(12000, 1, 1), QDate(1, 1, 1),
                              QDate(9999, 12, 31), QDate::fromJulianDay(1)}) {
        m_box->dateSelect(date);
        QCOMPARE(m_box->currentData().toDate(), date);
        open();
        press(Qt::Key_PageUp);
        press(Qt::Key_PageDown);
        press(Qt::Key_Return);
        QVERIFY(!isOpen());
        QVERIFY(m_box->currentData().toDate().isValid());
    }
    view->setMinimumDate(QDate(2024, 5, 1));
    view->setMaximumDate(QDate(2023, 5, 1));
    open();
    press(Qt::Key_Return);
    QCOMPARE(m_box->currentText(), QStringLiteral("2023-05-01"));
    m_box->clear();
    open();
    QVERIFY(isOpen());
    m_box->hidePopup();
}

void KovaDateSelectorTest::survivesItsEndWhileOpen()
{
    open();
    click(part<QToolButton>("yearbutton"), QPoint(5, 5));
    delete m_box;
    QVERIFY(!QApplication::activePopupWidget());

    m_box = new KovaDateSelector(placeholder, m_window);
    m_box->show();
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), m_box, [this](int index) {
        if (index == 0)
            m_box->deleteLater();
    });
    open();
    QTest::keyPress(popup()->windowHandle(), Qt::Key_Return);
    QTRY_VERIFY(!m_box);

    auto box = std::make_unique<KovaDateSelector>(placeholder, nullptr);
    box->show();
    box->showPopup();
    box->close();
    box.reset();
}

QTEST_MAIN(KovaDateSelectorTest)
#include "kova-date-selector-test.moc"
