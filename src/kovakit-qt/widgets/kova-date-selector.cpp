#include "kova-date-selector.h"

#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/event-filters.h>

#include <QCalendarWidget>
#include <QEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QStyleOptionComboBox>

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

KovaDateSelector::KovaDateSelector(QString placeholder, QWidget *parent)
    : QComboBox(parent)
    , m_calendarView(new KovaCalanderView(nullptr))
    , m_placeholder(std::move(placeholder))
{
    setView(m_calendarView);
    passWheelWithoutFocus(this);
    setPlaceholderApart(this);
    auto *releases = new MouseReleaseFilter(m_calendarView);
    m_calendarView->installEventFilter(releases);
    m_calendarView->viewport()->installEventFilter(releases);
    addPlaceholder();
    connect(m_calendarView, &KovaCalanderView::sigDateSelect, this, &KovaDateSelector::dateSelect);
    m_calendarView->setFixedWidth(kovaPx(280));
    m_calendarView->setFixedHeight(kovaPx(260));
    setFixedHeight(kovaPx(32));
    setStyleSheet(getStyleSheet("component.date_selector", false)
                  + getStyleSheet("component.menu", false));
    m_calendarView->window()->installEventFilter(this);
}

void KovaDateSelector::addPlaceholder()
{
    addItem(m_placeholder, QDate());
    showState();
}

void KovaDateSelector::showState()
{
    const QDate chosen = currentData().toDate();
    m_calendarView->showChosen(chosen);
    if (property("empty").toBool() == chosen.isNull())
        return;
    setProperty("empty", chosen.isNull());
    if (testAttribute(Qt::WA_WState_Polished))
        style()->polish(this);
}

KovaCalanderView *KovaDateSelector::getCalendarView() const
{
    return m_calendarView;
}

void KovaDateSelector::dateSelect(const QDate &date)
{
    clear();
    if (!date.isValid()) {
        addPlaceholder();
        return;
    }
    addItem(date.toString(dateFormat()), date);
    setCurrentIndex(0);
    showState();
    turnTo(date);
    repaint();
    hidePopup();
}

void KovaDateSelector::clearDate()
{
    clear();
    addPlaceholder();
    setCurrentIndex(0);
    turnTo(QDate::currentDate());
}

void KovaDateSelector::turnTo(const QDate &date)
{
    m_calendarView->moveTo(date);
    m_selectedBefore = QDate();
}

void KovaDateSelector::rememberCalendar()
{
    const auto *calendar = m_calendarView->findChild<QCalendarWidget *>();
    m_selectedBefore = calendar->selectedDate();
    m_pageBefore = QDate(calendar->yearShown(), calendar->monthShown(), 1);
}

void KovaDateSelector::restoreCalendar()
{
    if (!m_selectedBefore.isValid())
        return;
    m_calendarView->moveTo(m_selectedBefore);
    m_calendarView->setCurrentPage(m_pageBefore.year(), m_pageBefore.month());
}

QSize KovaDateSelector::sizeHint() const
{
    ensurePolished();
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QFontMetrics metrics = fontMetrics();
    const QSize texts(qMax(widestDate(metrics), metrics.horizontalAdvance(m_placeholder)),
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
    QWidget *popup = m_calendarView->window();
    if (popup->isVisible())
        return;
    showState();
    const QMargins frame = popup->contentsMargins();
    popup->setGeometry(popupGeometry(m_calendarView->minimumSize().grownBy(frame)));
    rememberCalendar();
    popup->raise();
    popup->show();
    m_calendarView->focusDays();
}

QRect KovaDateSelector::popupGeometry(const QSize &size) const
{
    const QRect box(mapToGlobal(QPoint()), this->size());
    const QScreen *boxScreen = QGuiApplication::screenAt(box.center());
    const QRect area = (boxScreen ? boxScreen : screen())->availableGeometry();

    QRect popup(box.bottomLeft() + QPoint(0, 1), size);
    if (isRightToLeft())
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
    if (event->type() == QEvent::Hide && watched == m_calendarView->window()) {
        restoreCalendar();
        if (isVisible())
            setFocus(Qt::PopupFocusReason);
    }
    return QComboBox::eventFilter(watched, event);
}
