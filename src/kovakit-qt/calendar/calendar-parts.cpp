// SPDX-License-Identifier: MIT

#include "calendar-parts_p.h"

#include <QCalendarWidget>

CalendarParts::CalendarParts(const QCalendarWidget *calendar)
    : navigationBar(calendar->findChild<QWidget *>(QStringLiteral("qt_calendar_navigationbar")))
    , previousMonth(calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_prevmonth")))
    , nextMonth(calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_nextmonth")))
    , month(calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_monthbutton")))
    , year(calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_yearbutton")))
    , yearEdit(calendar->findChild<QSpinBox *>(QStringLiteral("qt_calendar_yearedit")))
    , days(calendar->findChild<QTableView *>(QStringLiteral("qt_calendar_calendarview")))
{
}
