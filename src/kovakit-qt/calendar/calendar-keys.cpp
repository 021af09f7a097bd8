// SPDX-License-Identifier: MIT

#include "calendar-keys_p.h"

#include "date-typing_p.h"
#include "house-calendar_p.h"
#include "kovakit-qt/utils/keys_p.h"

#include <QKeyEvent>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

// The arrow buttons themselves leave out the state of having the focus.
void paintWithFocus(const QToolButton *button)
{
    QStyleOptionToolButton option;
    option.initFrom(button);
    option.icon = button->icon();
    option.iconSize = button->iconSize();
    option.subControls = QStyle::SC_ToolButton;
    option.toolButtonStyle = Qt::ToolButtonIconOnly;
    option.state |= button->isDown() ? QStyle::State_Sunken : QStyle::State_Raised;
    option.state.setFlag(QStyle::State_AutoRaise, button->autoRaise());
    if (button->isDown())
        option.activeSubControls = QStyle::SC_ToolButton;
    QStylePainter(const_cast<QToolButton *>(button))
        .drawComplexControl(QStyle::CC_ToolButton, option);
}

void press(QWidget *focused)
{
    auto *toolButton = qobject_cast<QToolButton *>(focused);
    if (toolButton && toolButton->menu())
        toolButton->showMenu();
    else if (auto *button = qobject_cast<QAbstractButton *>(focused))
        button->click();
}

} // namespace

CalendarKeys::CalendarKeys(HouseCalendar *calendar)
    : QObject(calendar)
    , m_calendar(calendar)
    , m_days(calendar->parts().days)
    , m_typing(m_days ? new DateTyping(calendar, m_days) : nullptr)
    , m_arrows{calendar->parts().previousMonth, calendar->parts().nextMonth}
{
    calendar->installEventFilter(this);
    for (QObject *part : {static_cast<QObject *>(m_days), m_arrows[0], m_arrows[1]}) {
        if (part)
            part->installEventFilter(this);
    }
}

void CalendarKeys::addButton(QWidget *button)
{
    button->installEventFilter(this);
}

bool CalendarKeys::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        // Accepted, the key comes as a press instead of climbing on to a popup.
        const auto *key = static_cast<QKeyEvent *>(event);
        if (isReturn(key) || (key->matches(QKeySequence::Cancel) && isTyping())) {
            event->accept();
            return true;
        }
        return false;
    }
    case QEvent::KeyPress:
        return keyPressed(watched, static_cast<QKeyEvent *>(event));
    case QEvent::Paint:
        if (watched != m_arrows[0] && watched != m_arrows[1])
            return false;
        paintWithFocus(static_cast<QToolButton *>(watched));
        return true;
    default:
        return false;
    }
}

bool CalendarKeys::keyPressed(QObject *watched, const QKeyEvent *event)
{
    if (watched != m_days) {
        // The field for the year has done with the key when it arrives at the calendar.
        if (isReturn(event))
            press(m_calendar->window()->focusWidget());
        return isReturn(event);
    }
    if (m_typing->keyPressed(event))
        return true;
    if (!isReturn(event) && event->key() != Qt::Key_Space)
        return false;
    if (m_typing->accept())
        chooseDay();
    return true;
}

void CalendarKeys::chooseDay()
{
    const QDate day = m_calendar->currentDay();
    if (!m_calendar->isInRange(day))
        return;
    m_calendar->setSelectedDate(day);
    Q_EMIT m_calendar->activated(day);
}

bool CalendarKeys::isTyping() const
{
    return m_calendar->isTypingYear() || (m_typing && m_typing->isActive());
}
