#include "kova-calander-view.h"

#include "kovakit-qt/accessibility/named-action_p.h"
#include "kovakit-qt/calendar/calendar-keys_p.h"
#include "kovakit-qt/calendar/house-calendar_p.h"
#include "kovakit-qt/utils/component-strings_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/event-filters.h>
#include <kovakit-qt/widgets/kova-button.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QTableWidget>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int firstYear = 1;
constexpr int lastYear = 9999;

} // namespace

KovaCalanderView::KovaCalanderView(QWidget *parent)
    : QAbstractItemView(parent)
    , m_calendar(new HouseCalendar(this))
    , m_todayButton(new KovaButton(componentString("today"), KovaButton::Cancel))
{
    m_todayButton->setFixedHeight(kovaPx(24));
    m_todayButton->setObjectName(QStringLiteral("qt_calendar_today_button"));
    m_calendar->setFirstDayOfWeek(Qt::Sunday);
    m_calendar->setDateRange(QDate(firstYear, 1, 1), QDate(lastYear, 12, 31));

    auto *box = new QVBoxLayout(this);
    box->addWidget(m_calendar);
    box->addWidget(m_todayButton, 0, Qt::AlignHCenter);
    setSelectionMode(NoSelection);
    m_calendar->setHorizontalHeaderFormat(QCalendarWidget::NoHorizontalHeader);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);

    QTextCharFormat weekend = m_calendar->weekdayTextFormat(Qt::Saturday);
    weekend.setForeground(QBrush(Qt::black));
    m_calendar->setWeekdayTextFormat(Qt::Saturday, weekend);
    m_calendar->setWeekdayTextFormat(Qt::Sunday, weekend);
    setAccessibleName(componentString("accessible_calendar"));

    handleNavigationBar();
    handleWeekdayHeader();
    handleTabOrder();

    if (days())
        dropLateClicks(days()->viewport());
    auto *keys = new CalendarKeys(m_calendar);
    keys->addButton(m_todayButton);
    for (QWidget *part : {static_cast<QWidget *>(navigationButton("qt_calendar_yearbutton")),
                          yearEdit(), static_cast<QWidget *>(days()), m_todayButton}) {
        if (part)
            part->installEventFilter(this);
    }
    if (QTableView *grid = days())
        grid->viewport()->installEventFilter(this);

    connect(m_calendar, &QCalendarWidget::activated, this, &KovaCalanderView::choose);
    connect(m_calendar, &QCalendarWidget::clicked, this, &KovaCalanderView::choose);
    connect(static_cast<KovaButton *>(m_todayButton), &QPushButton::clicked, this,
            &KovaCalanderView::selectToday);
    connect(m_calendar, &QCalendarWidget::currentPageChanged, this, &KovaCalanderView::pageChanged);
}

QToolButton *KovaCalanderView::navigationButton(const char *name) const
{
    return m_calendar->findChild<QToolButton *>(QLatin1String(name));
}

QTableView *KovaCalanderView::days() const
{
    return m_calendar->findChild<QTableView *>(QStringLiteral("qt_calendar_calendarview"));
}

QWidget *KovaCalanderView::yearEdit() const
{
    return m_calendar->findChild<QWidget *>(QStringLiteral("qt_calendar_yearedit"));
}

void KovaCalanderView::handleNavigationBar()
{
    for (const char *name : {"qt_calendar_prevmonth", "qt_calendar_nextmonth",
                             "qt_calendar_monthbutton", "qt_calendar_yearbutton"}) {
        if (QToolButton *button = navigationButton(name))
            button->setFocusPolicy(Qt::StrongFocus);
    }
    const auto name = [this](const char *buttonName, const char *key) {
        if (QToolButton *button = navigationButton(buttonName)) {
            button->setAccessibleName(componentString(key));
            button->setToolTip(button->accessibleName());
        }
    };
    name("qt_calendar_prevmonth", "accessible_calendar_prev_month");
    name("qt_calendar_nextmonth", "accessible_calendar_next_month");
    if (QWidget *edit = yearEdit())
        edit->setAttribute(Qt::WA_MacShowFocusRect, false);
    if (auto *bar = m_calendar->findChild<QWidget *>(QStringLiteral("qt_calendar_navigationbar"))) {
        bar->setAutoFillBackground(false);
        // Without the bar's background the buttons' text has to be seen on the calendar's.
        QPalette colors = bar->palette();
        for (QPalette::ColorGroup group :
             {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            colors.setBrush(group, QPalette::HighlightedText,
                            colors.brush(group, QPalette::WindowText));
        bar->setPalette(colors);
        bar->installEventFilter(new MouseButtonFilter(bar));
    }
    handleMonthMenu();
}

void KovaCalanderView::handleMonthMenu()
{
    for (const char *key :
         {"month_jan", "month_feb", "month_mar", "month_apr", "month_may", "month_jun", "month_jul",
          "month_aug", "month_sep", "month_oct", "month_nov", "month_dec"}) {
        m_monthNames.append(componentString(key));
    }
    const QToolButton *button = navigationButton("qt_calendar_monthbutton");
    if (!button || !button->menu())
        return;
    button->menu()->setToolTipsVisible(true);
    for (QAction *action : button->menu()->actions()) {
        const QString name = m_monthNames.value(action->data().toInt() - 1);
        action->setText(name.left(3));
        setFullName(action, name);
    }
    dropLateClicks(button->menu());
    // The calendar copies the short name from the menu, even if the page stays.
    connect(button->menu(), &QMenu::triggered, this,
            [this] { pageChanged(m_calendar->yearShown(), m_calendar->monthShown()); });
    const QDate today = QDate::currentDate();
    pageChanged(today.year(), today.month());
}

void KovaCalanderView::pageChanged(int, int month)
{
    if (QToolButton *button = navigationButton("qt_calendar_monthbutton"))
        button->setText(m_monthNames.value(month - 1));
}

void KovaCalanderView::slotMonthTriggered(QAction *action)
{
    if (action)
        pageChanged(m_calendar->yearShown(), action->data().toInt());
}

void KovaCalanderView::handleWeekdayHeader()
{
    m_weekdayHeader = new QTableWidget(0, 7);
    m_weekdayHeader->setFocusPolicy(Qt::NoFocus);
    m_weekdayHeader->setObjectName(QStringLiteral("qt_calendar_weekdayview"));
    m_weekdayHeader->setFixedHeight(kovaPx(30));
    m_weekdayHeader->verticalHeader()->hide();
    m_weekdayHeader->horizontalHeader()->hide();

    m_weekdayHeader->insertRow(0);
    int column = 0;
    for (const char *key :
         {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"}) {
        auto *item = new QTableWidgetItem(componentString(key).left(1));
        item->setTextAlignment(Qt::AlignCenter);
        m_weekdayHeader->setItem(0, column++, item);
    }

    m_weekdayHeader->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_weekdayHeader->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_weekdayHeader->setSizeAdjustPolicy(AdjustToContents);
    m_weekdayHeader->setEditTriggers(NoEditTriggers);
    m_weekdayHeader->setSelectionMode(NoSelection);
    m_weekdayHeader->setFrameShape(NoFrame);
    m_weekdayHeader->setShowGrid(false);
    for (QTableView *table : {days(), static_cast<QTableView *>(m_weekdayHeader)}) {
        if (!table)
            continue;
        table->horizontalHeader()->setDefaultSectionSize(30);
        // The least size that styles give to sections would push the last column out of sight.
        for (QHeaderView *header : {table->horizontalHeader(), table->verticalHeader()}) {
            header->setMinimumSectionSize(1);
            header->setSectionResizeMode(QHeaderView::Stretch);
        }
    }
    m_calendar->insertRow(m_weekdayHeader);
    // A sheet that is set before the parent is known is read once more afterwards.
    m_weekdayHeader->horizontalHeader()->setStyleSheet(
        getStyleSheet("component.table_header", false));
    m_weekdayHeader->setStyleSheet(getStyleSheet("component.table", false));
}

void KovaCalanderView::handleTabOrder()
{
    QWidget *last = this;
    for (QWidget *next : {static_cast<QWidget *>(navigationButton("qt_calendar_prevmonth")),
                          static_cast<QWidget *>(navigationButton("qt_calendar_nextmonth")),
                          static_cast<QWidget *>(navigationButton("qt_calendar_monthbutton")),
                          static_cast<QWidget *>(navigationButton("qt_calendar_yearbutton")),
                          yearEdit(), static_cast<QWidget *>(days()), m_todayButton}) {
        if (!next)
            continue;
        setTabOrder(last, next);
        last = next;
    }
}

void KovaCalanderView::setCurrentPage(int year, int month)
{
    QDate first(year, month, 1);
    if (!first.isValid())
        return;
    const auto monthOf = [](const QDate &date) { return QDate(date.year(), date.month(), 1); };
    first = qBound(monthOf(m_calendar->minimumDate()), first, monthOf(m_calendar->maximumDate()));
    m_calendar->setCurrentPage(first.year(), first.month());
}

void KovaCalanderView::setSelectedDate(const QDate &date)
{
    if (!m_calendar->isInRange(date))
        return;
    m_calendar->setSelectedDate(date);
    m_calendar->setChosenDay(date);
}

void KovaCalanderView::showChosen(const QDate &date)
{
    m_calendar->setChosenDay(date);
}

// To the nearest day that can be chosen.
void KovaCalanderView::moveTo(const QDate &date)
{
    m_calendar->setSelectedDate(date);
}

QColor KovaCalanderView::todayColor() const
{
    return m_calendar->todayColor();
}

void KovaCalanderView::setTodayColor(const QColor &color)
{
    m_calendar->setTodayColor(color);
}

QColor KovaCalanderView::otherMonthColor() const
{
    return m_calendar->otherMonthColor();
}

void KovaCalanderView::setOtherMonthColor(const QColor &color)
{
    m_calendar->setOtherMonthColor(color);
}

void KovaCalanderView::setMinimumDate(const QDate &date)
{
    if (!date.isValid())
        return;
    m_calendar->setMinimumDate(qBound(QDate(firstYear, 1, 1), date, QDate(lastYear, 12, 31)));
    updateTodayButton();
}

void KovaCalanderView::setMaximumDate(const QDate &date)
{
    if (!date.isValid())
        return;
    m_calendar->setMaximumDate(qBound(QDate(firstYear, 1, 1), date, QDate(lastYear, 12, 31)));
    updateTodayButton();
}

void KovaCalanderView::choose(const QDate &date)
{
    if (!m_calendar->isInRange(date))
        return;
    m_calendar->setChosenDay(date);
    if (m_isReleasing)
        m_clickedDate = date;
    else
        Q_EMIT sigDateSelect(date);
}

void KovaCalanderView::selectToday()
{
    const QDate today = QDate::currentDate();
    setSelectedDate(today);
    choose(today);
}

void KovaCalanderView::updateTodayButton()
{
    m_todayButton->setEnabled(m_calendar->isInRange(QDate::currentDate()));
}

void KovaCalanderView::focusDays()
{
    if (QTableView *grid = days())
        grid->setFocus(Qt::PopupFocusReason);
}

void KovaCalanderView::fitMonthButton()
{
    QToolButton *button = navigationButton("qt_calendar_monthbutton");
    if (!button)
        return;
    button->ensurePolished();
    const auto widthOf = [button](const QString &text) {
        return button->fontMetrics().size(Qt::TextShowMnemonic, text).width();
    };
    int widest = 0;
    for (const QString &name : qAsConst(m_monthNames))
        widest = qMax(widest, widthOf(name));
    button->setMinimumWidth(button->sizeHint().width() - widthOf(button->text()) + widest);
}

QSize KovaCalanderView::sizeHint() const
{
    return QSize(kovaPx(280), kovaPx(260)).expandedTo(minimumSizeHint());
}

QSize KovaCalanderView::minimumSizeHint() const
{
    return layout()->totalMinimumSize();
}

QRect KovaCalanderView::visualRect(const QModelIndex &) const
{
    return QRect();
}

void KovaCalanderView::scrollTo(const QModelIndex &, ScrollHint) { }

QModelIndex KovaCalanderView::indexAt(const QPoint &) const
{
    return QModelIndex();
}

QModelIndex KovaCalanderView::moveCursor(CursorAction, Qt::KeyboardModifiers)
{
    return QModelIndex();
}

int KovaCalanderView::horizontalOffset() const
{
    return 0;
}

int KovaCalanderView::verticalOffset() const
{
    return 0;
}

bool KovaCalanderView::isIndexHidden(const QModelIndex &) const
{
    return true;
}

void KovaCalanderView::setSelection(const QRect &, QItemSelectionModel::SelectionFlags) { }

QRegion KovaCalanderView::visualRegionForSelection(const QItemSelection &) const
{
    return QRegion();
}

void KovaCalanderView::showEvent(QShowEvent *event)
{
    updateTodayButton();
    QAbstractItemView::showEvent(event);
}

bool KovaCalanderView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return true;
    case QEvent::Polish:
        fitMonthButton();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        // Before that it would be measured, and polished, for nothing.
        if (testAttribute(Qt::WA_WState_Polished))
            fitMonthButton();
        break;
    default:
        break;
    }
    return QAbstractItemView::event(event);
}

// The days go on after they told of a click, while the host may delete the calendar in answer.
void KovaCalanderView::releaseOverDays(QEvent *event)
{
    m_isReleasing = true;
    QCoreApplication::sendEvent(days()->viewport(), event);
    m_isReleasing = false;
    const QDate date = std::exchange(m_clickedDate, QDate());
    if (!date.isValid())
        return;
    event->accept();
    Q_EMIT sigDateSelect(date);
}

bool KovaCalanderView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && !m_isReleasing && days()
        && watched == days()->viewport()) {
        releaseOverDays(event);
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab)
        return false;
    focusNextPrevChild(key == Qt::Key_Tab);
    QTableView *grid = days();
    if (grid && grid->hasFocus() && grid->currentIndex().isValid()) {
        const QModelIndex index = grid->currentIndex();
        grid->setCurrentIndex(QModelIndex());
        grid->setCurrentIndex(index);
    }
    return true;
}
