// SPDX-License-Identifier: MIT

#include "kova-calander-view.h"

#include "kovakit-qt/accessibility/named-accessible_p.h"
#include "kovakit-qt/accessibility/named-action_p.h"
#include "kovakit-qt/calendar/calendar-accessible_p.h"
#include "kovakit-qt/calendar/calendar-keys_p.h"
#include "kovakit-qt/calendar/house-calendar_p.h"
#include "kovakit-qt/utils/component-strings_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/widgets/event-filters.h>
#include <kovakit-qt/widgets/kova-button.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QTableWidget>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

namespace {

constexpr int firstYear = 1;
constexpr int lastYear = 9999;

} // namespace

class KovaCalanderView::Private
{
public:
    explicit Private(KovaCalanderView *view)
        : q(view)
        , calendar(new HouseCalendar(view))
        , todayButton(new KovaButton(componentString("today"), KovaButton::Cancel))
    {
    }

    void handleNavigationBar();
    void handleMonthMenu();
    void handleWeekdayHeader();
    void handleTabOrder();

    void choose(const QDate &date);
    void releaseOverDays(QEvent *event);
    void fitMonthButton();
    void updateTodayButton();
    [[nodiscard]] const CalendarParts &parts() const { return calendar->parts(); }

    KovaCalanderView *const q;
    HouseCalendar *const calendar;
    KovaButton *const todayButton;
    QStringList monthNames;
    bool isReleasing = false;
    QDate clickedDate;
};

KovaCalanderView::KovaCalanderView(QWidget *parent)
    : QAbstractItemView(parent)
    , d(std::make_unique<Private>(this))
{
    QAccessible::installFactory(createAccessible<KovaCalanderView, CalendarAccessible>);
    d->todayButton->setFixedHeight(kovaPx(24));
    d->todayButton->setObjectName(QStringLiteral("qt_calendar_today_button"));
    d->calendar->setTodayText(d->todayButton->text());
    d->calendar->setFirstDayOfWeek(Qt::Sunday);
    d->calendar->setDateRange(QDate(firstYear, 1, 1), QDate(lastYear, 12, 31));

    auto *box = new QVBoxLayout(this);
    box->addWidget(d->calendar);
    box->addWidget(d->todayButton, 0, Qt::AlignHCenter);
    setSelectionMode(NoSelection);
    d->calendar->setHorizontalHeaderFormat(QCalendarWidget::NoHorizontalHeader);
    d->calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);

    QTextCharFormat weekend = d->calendar->weekdayTextFormat(Qt::Saturday);
    weekend.setForeground(QBrush(Qt::black));
    d->calendar->setWeekdayTextFormat(Qt::Saturday, weekend);
    d->calendar->setWeekdayTextFormat(Qt::Sunday, weekend);
    setAccessibleName(componentString("accessible_calendar"));

    d->handleNavigationBar();
    d->handleWeekdayHeader();
    d->handleTabOrder();

    if (d->parts().days)
        dropLateClicks(d->parts().days->viewport());
    new CalendarSpeaker(d->calendar);
    auto *keys = new CalendarKeys(d->calendar);
    keys->addButton(d->todayButton);
    keys->addFrame(this);
    for (QWidget *part : std::initializer_list<QWidget *>{d->parts().year, d->parts().yearEdit,
                                                          d->parts().days, d->todayButton}) {
        if (part)
            part->installEventFilter(this);
    }
    if (QTableView *grid = d->parts().days)
        grid->viewport()->installEventFilter(this);

    connect(d->calendar, &QCalendarWidget::activated, this,
            [this](const QDate &date) { d->choose(date); });
    connect(d->calendar, &QCalendarWidget::clicked, this,
            [this](const QDate &date) { d->choose(date); });
    connect(d->todayButton, &QPushButton::clicked, this, &KovaCalanderView::selectToday);
    connect(d->calendar, &QCalendarWidget::currentPageChanged, this,
            &KovaCalanderView::pageChanged);
}

KovaCalanderView::~KovaCalanderView() = default;

void KovaCalanderView::Private::handleNavigationBar()
{
    for (QToolButton *button : std::initializer_list<QToolButton *>{
             parts().previousMonth, parts().nextMonth, parts().month, parts().year}) {
        if (button)
            button->setFocusPolicy(Qt::StrongFocus);
    }
    const auto name = [](QToolButton *button, const char *key) {
        if (button) {
            button->setAccessibleName(componentString(key));
            button->setToolTip(button->accessibleName());
        }
    };
    name(parts().previousMonth, "accessible_calendar_prev_month");
    name(parts().nextMonth, "accessible_calendar_next_month");
    if (ComponentStrings::getInstance()->hasString(QStringLiteral("accessible_calendar_year"))) {
        name(parts().year, "accessible_calendar_year");
        if (parts().yearEdit)
            parts().yearEdit->setAccessibleName(parts().year->accessibleName());
    }
    if (parts().yearEdit)
        parts().yearEdit->setAttribute(Qt::WA_MacShowFocusRect, false);
    if (QWidget *bar = parts().navigationBar) {
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

void KovaCalanderView::Private::handleMonthMenu()
{
    for (const char *key :
         {"month_jan", "month_feb", "month_mar", "month_apr", "month_may", "month_jun", "month_jul",
          "month_aug", "month_sep", "month_oct", "month_nov", "month_dec"}) {
        monthNames.append(componentString(key));
    }
    const QToolButton *button = parts().month;
    if (!button || !button->menu())
        return;
    button->menu()->setToolTipsVisible(true);
    for (QAction *action : button->menu()->actions()) {
        const QString name = monthNames.value(action->data().toInt() - 1);
        action->setText(name.left(3));
        setFullName(action, name);
    }
    dropLateClicks(button->menu());
    // The calendar copies the short name from the menu, even if the page stays.
    connect(button->menu(), &QMenu::triggered, q,
            [this] { q->pageChanged(calendar->yearShown(), calendar->monthShown()); });
    const QDate today = QDate::currentDate();
    q->pageChanged(today.year(), today.month());
}

void KovaCalanderView::pageChanged(int, int month)
{
    if (QToolButton *button = d->parts().month)
        button->setText(d->monthNames.value(month - 1));
}

void KovaCalanderView::slotMonthTriggered(QAction *action)
{
    if (action)
        pageChanged(d->calendar->yearShown(), action->data().toInt());
}

void KovaCalanderView::Private::handleWeekdayHeader()
{
    auto *weekdayHeader = new QTableWidget(0, 7);
    weekdayHeader->setFocusPolicy(Qt::NoFocus);
    weekdayHeader->setObjectName(QStringLiteral("qt_calendar_weekdayview"));
    weekdayHeader->setFixedHeight(kovaPx(30));
    weekdayHeader->verticalHeader()->hide();
    weekdayHeader->horizontalHeader()->hide();

    weekdayHeader->insertRow(0);
    int column = 0;
    for (const char *key :
         {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"}) {
        auto *item = new QTableWidgetItem(componentString(key).left(1));
        item->setTextAlignment(Qt::AlignCenter);
        weekdayHeader->setItem(0, column++, item);
    }

    weekdayHeader->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    weekdayHeader->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    weekdayHeader->setSizeAdjustPolicy(AdjustToContents);
    weekdayHeader->setEditTriggers(NoEditTriggers);
    weekdayHeader->setSelectionMode(NoSelection);
    weekdayHeader->setFrameShape(NoFrame);
    weekdayHeader->setShowGrid(false);
    for (QTableView *table : std::initializer_list<QTableView *>{parts().days, weekdayHeader}) {
        if (!table)
            continue;
        table->horizontalHeader()->setDefaultSectionSize(30);
        // The least size that styles give to sections would push the last column out of sight.
        for (QHeaderView *header : {table->horizontalHeader(), table->verticalHeader()}) {
            header->setMinimumSectionSize(1);
            header->setSectionResizeMode(QHeaderView::Stretch);
        }
    }
    calendar->insertRow(weekdayHeader);
    // A sheet that is set before the parent is known is read once more afterwards.
    weekdayHeader->horizontalHeader()->setStyleSheet(
        getStyleSheet("component.table_header", false));
    weekdayHeader->setStyleSheet(getStyleSheet("component.table", false));
}

void KovaCalanderView::Private::handleTabOrder()
{
    QWidget *last = q;
    for (QWidget *next : std::initializer_list<QWidget *>{
             parts().previousMonth, parts().nextMonth, parts().month, parts().year,
             parts().yearEdit, parts().days, todayButton}) {
        if (!next)
            continue;
        setTabOrder(last, next);
        last = next;
    }
}

void KovaCalanderView::setCurrentPage(int year, int month)
{
    d->calendar->turnTo(year, month);
}

void KovaCalanderView::setSelectedDate(const QDate &date)
{
    if (!d->calendar->isInRange(date))
        return;
    d->calendar->setSelectedDate(date);
    d->calendar->setChosenDay(date);
}

QColor KovaCalanderView::todayColor() const
{
    return d->calendar->todayColor();
}

void KovaCalanderView::setTodayColor(const QColor &color)
{
    d->calendar->setTodayColor(color);
}

QColor KovaCalanderView::otherMonthColor() const
{
    return d->calendar->otherMonthColor();
}

void KovaCalanderView::setOtherMonthColor(const QColor &color)
{
    d->calendar->setOtherMonthColor(color);
}

void KovaCalanderView::setMinimumDate(const QDate &date)
{
    if (!date.isValid())
        return;
    d->calendar->setMinimumDate(qBound(QDate(firstYear, 1, 1), date, QDate(lastYear, 12, 31)));
    d->updateTodayButton();
}

void KovaCalanderView::setMaximumDate(const QDate &date)
{
    if (!date.isValid())
        return;
    d->calendar->setMaximumDate(qBound(QDate(firstYear, 1, 1), date, QDate(lastYear, 12, 31)));
    d->updateTodayButton();
}

void KovaCalanderView::Private::choose(const QDate &date)
{
    if (!calendar->isInRange(date))
        return;
    calendar->setChosenDay(date);
    if (isReleasing)
        clickedDate = date;
    else
        Q_EMIT q->sigDateSelect(date);
}

void KovaCalanderView::selectToday()
{
    const QDate today = QDate::currentDate();
    setSelectedDate(today);
    d->choose(today);
}

void KovaCalanderView::Private::updateTodayButton()
{
    todayButton->setEnabled(calendar->isInRange(QDate::currentDate()));
}

void KovaCalanderView::Private::fitMonthButton()
{
    QToolButton *button = parts().month;
    if (!button)
        return;
    button->ensurePolished();
    const auto widthOf = [button](const QString &text) {
        return button->fontMetrics().size(Qt::TextShowMnemonic, text).width();
    };
    int widest = 0;
    for (const QString &name : qAsConst(monthNames))
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
    d->updateTodayButton();
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
        d->fitMonthButton();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        // Before that it would be measured, and polished, for nothing.
        if (testAttribute(Qt::WA_WState_Polished))
            d->fitMonthButton();
        break;
    default:
        break;
    }
    return QAbstractItemView::event(event);
}

// The days go on after they told of a click, while the host may delete the calendar in answer.
void KovaCalanderView::Private::releaseOverDays(QEvent *event)
{
    isReleasing = true;
    QCoreApplication::sendEvent(parts().days->viewport(), event);
    isReleasing = false;
    const QDate date = std::exchange(clickedDate, QDate());
    if (!date.isValid())
        return;
    event->accept();
    Q_EMIT q->sigDateSelect(date);
}

bool KovaCalanderView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && !d->isReleasing && d->parts().days
        && watched == d->parts().days->viewport()) {
        d->releaseOverDays(event);
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab)
        return false;
    focusNextPrevChild(key == Qt::Key_Tab);
    QTableView *grid = d->parts().days;
    if (grid && grid->hasFocus() && grid->currentIndex().isValid()) {
        const QModelIndex index = grid->currentIndex();
        grid->setCurrentIndex(QModelIndex());
        grid->setCurrentIndex(index);
    }
    return true;
}
