// SPDX-License-Identifier: MIT

#include "calendar-keys_p.h"

#include "date-typing_p.h"
#include "house-calendar_p.h"
#include "kovakit-qt/utils/keys_p.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

#include <initializer_list>

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

bool isDigit(const QKeyEvent *event)
{
    const QString text = event->text();
    return text.size() == 1 && text.at(0).isDigit();
}

bool hasModifiers(const QKeyEvent *event)
{
    return event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
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
    for (QObject *part : std::initializer_list<QObject *>{m_days, m_arrows[0], m_arrows[1],
                                                          calendar->parts().year}) {
        if (part)
            part->installEventFilter(this);
    }
}

void CalendarKeys::addButton(QWidget *button)
{
    button->installEventFilter(this);
}

void CalendarKeys::addFrame(QWidget *frame)
{
    m_frame = frame;
    frame->installEventFilter(this);
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

bool CalendarKeys::keyPressed(QObject *watched, QKeyEvent *event)
{
    if (passOn(watched, event))
        return true;
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
        m_calendar->choose(m_calendar->currentDay());
    return true;
}

// Gives a key to the part that it is meant for: from around the calendar to the days, from the
// button for the year to the field that takes its place.
bool CalendarKeys::passOn(QObject *watched, QKeyEvent *event)
{
    if (hasModifiers(event))
        return false;
    const int key = event->key();
    const bool walks = key >= Qt::Key_Home && key <= Qt::Key_PageDown;
    // A key that the days do not want climbs on to the frame, which has no focus then.
    if (m_days && watched == m_frame && m_frame->window()->focusWidget() == m_frame
        && (walks || isDigit(event) || isReturn(event) || key == Qt::Key_Space)) {
        m_calendar->focusDays(Qt::OtherFocusReason);
        QCoreApplication::sendEvent(m_days, event);
        return true;
    }
    const CalendarParts &parts = m_calendar->parts();
    if (parts.yearEdit && parts.year && watched == parts.year
        && (key == Qt::Key_Up || key == Qt::Key_Down || isDigit(event))) {
        parts.year->click();
        QCoreApplication::sendEvent(parts.yearEdit, event);
        return true;
    }
    return false;
}

bool CalendarKeys::isTyping() const
{
    return m_calendar->isTypingYear() || (m_typing && m_typing->isActive());
}
