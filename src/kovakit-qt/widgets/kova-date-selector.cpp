// SPDX-License-Identifier: MIT

#include "kova-date-selector.h"

#include "kovakit-qt/accessibility/choice-accessible_p.h"
#include "kovakit-qt/accessibility/named-accessible_p.h"
#include "kovakit-qt/calendar/house-calendar_p.h"
#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/event-filters.h>

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStyleOptionComboBox>

#include <utility>

namespace {

QString dateFormat()
{
    return QStringLiteral("yyyy-MM-dd");
}

int widestDate(const QFontMetrics &metrics)
{
    int widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        QString date = dateFormat();
        for (QChar &letter : date) {
            if (letter.isLetter())
                letter = QLatin1Char(digit);
        }
        widest = qMax(widest, metrics.horizontalAdvance(date));
    }
    return widest;
}

} // namespace

class KovaDateSelector::Private
{
public:
    Private(KovaDateSelector *selector, QString text)
        : q(selector)
        , calendarView(new KovaCalanderView(nullptr))
        , calendar(calendarView->findChild<HouseCalendar *>())
        , placeholder(std::move(text))
    {
    }

    void addPlaceholder();
    void showState();
    void turnTo(const QDate &date);
    void rememberCalendar();
    void restoreCalendar();
    [[nodiscard]] QRect popupGeometry(const QSize &size) const;

    KovaDateSelector *const q;
    KovaCalanderView *const calendarView;
    // Inside the view. It goes to days, and shows a chosen one, without the view's own checks.
    HouseCalendar *const calendar;
    const QString placeholder;
    QDate selectedBefore;
    QDate pageBefore;
};

KovaDateSelector::KovaDateSelector(QString placeholder, QWidget *parent)
    : QComboBox(parent)
    , d(std::make_unique<Private>(this, std::move(placeholder)))
{
    QAccessible::installFactory(createAccessible<KovaDateSelector, ChoiceAccessible>);
    setView(d->calendarView);
    passWheelWithoutFocus(this);
    setPlaceholderApart(this);
    auto *releases = new MouseReleaseFilter(d->calendarView);
    d->calendarView->installEventFilter(releases);
    d->calendarView->viewport()->installEventFilter(releases);
    d->addPlaceholder();
    connect(d->calendarView, &KovaCalanderView::sigDateSelect, this, &KovaDateSelector::dateSelect);
    d->calendarView->setFixedWidth(kovaPx(280));
    d->calendarView->setFixedHeight(kovaPx(260));
    setFixedHeight(kovaPx(32));
    setStyleSheet(getStyleSheet("component.date_selector", false)
                  + getStyleSheet("component.menu", false));
    d->calendarView->window()->installEventFilter(this);
}

void KovaDateSelector::Private::addPlaceholder()
{
    q->addItem(placeholder, QDate());
    showState();
}

void KovaDateSelector::Private::showState()
{
    const QDate chosen = q->currentData().toDate();
    calendar->setChosenDay(chosen);
    if (q->property("empty").toBool() == chosen.isNull())
        return;
    q->setProperty("empty", chosen.isNull());
    if (q->testAttribute(Qt::WA_WState_Polished))
        q->style()->polish(q);
}

KovaDateSelector::~KovaDateSelector() = default;

KovaCalanderView *KovaDateSelector::getCalendarView() const
{
    return d->calendarView;
}

void KovaDateSelector::dateSelect(const QDate &date)
{
    clear();
    if (!date.isValid()) {
        d->addPlaceholder();
        return;
    }
    addItem(date.toString(dateFormat()), date);
    setCurrentIndex(0);
    d->showState();
    d->turnTo(date);
    repaint();
    hidePopup();
}

void KovaDateSelector::clearDate()
{
    clear();
    d->addPlaceholder();
    setCurrentIndex(0);
    d->turnTo(QDate::currentDate());
}

void KovaDateSelector::Private::turnTo(const QDate &date)
{
    calendar->setSelectedDate(date);
    selectedBefore = QDate();
}

void KovaDateSelector::Private::rememberCalendar()
{
    selectedBefore = calendar->selectedDate();
    pageBefore = QDate(calendar->yearShown(), calendar->monthShown(), 1);
}

void KovaDateSelector::Private::restoreCalendar()
{
    if (!selectedBefore.isValid())
        return;
    calendar->setSelectedDate(selectedBefore);
    calendarView->setCurrentPage(pageBefore.year(), pageBefore.month());
}

QSize KovaDateSelector::sizeHint() const
{
    ensurePolished();
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QFontMetrics metrics = fontMetrics();
    const QSize texts(qMax(widestDate(metrics), metrics.horizontalAdvance(d->placeholder)),
                      metrics.height());
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, texts, this);
}

QSize KovaDateSelector::minimumSizeHint() const
{
    return sizeHint();
}

// The popup of a combo box is as wide as the box and may be cut off at the edge of the screen.
void KovaDateSelector::showPopup()
{
    QWidget *popup = d->calendarView->window();
    if (popup->isVisible())
        return;
    d->showState();
    const QMargins frame = popup->contentsMargins();
    popup->setGeometry(d->popupGeometry(d->calendarView->minimumSize().grownBy(frame)));
    d->rememberCalendar();
    popup->raise();
    popup->show();
    d->calendar->focusDays(Qt::PopupFocusReason);
}

QRect KovaDateSelector::Private::popupGeometry(const QSize &size) const
{
    const QRect box(q->mapToGlobal(QPoint()), q->size());
    const QScreen *boxScreen = QGuiApplication::screenAt(box.center());
    const QRect area = (boxScreen ? boxScreen : q->screen())->availableGeometry();

    QRect popup(box.bottomLeft() + QPoint(0, 1), size);
    if (q->isRightToLeft())
        popup.moveRight(box.right());
    if (popup.bottom() > area.bottom() && box.top() - size.height() >= area.top())
        popup.moveBottom(box.top() - 1);
    const auto fit = [](int position, int length, int start, int end) {
        return qMax(start, qMin(position, end - length + 1));
    };
    popup.moveTo(fit(popup.left(), size.width(), area.left(), area.right()),
                 fit(popup.top(), size.height(), area.top(), area.bottom()));
    return popup;
}

void KovaDateSelector::paintEvent(QPaintEvent *)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    paintComboBox(this, option, currentData().toDate().isValid() ? QString() : currentText());
}

bool KovaDateSelector::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide && watched == d->calendarView->window()) {
        d->restoreCalendar();
        if (isVisible())
            setFocus(Qt::PopupFocusReason);
    }
    return QComboBox::eventFilter(watched, event);
}
