// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets>

// A part of the calendar below @p view, by the end of the name that Qt gave to it.
template<class Part = QToolButton>
Part *calendarPart(const QWidget *view, const QString &name)
{
    return view->findChild<Part *>("qt_calendar_" + name);
}

inline QTableView *calendarDays(const QWidget *view)
{
    return calendarPart<QTableView>(view, "calendarview");
}

// The first day of the month that is shown.
inline QDate calendarPage(const QWidget *view)
{
    const auto *calendar = view->findChild<QCalendarWidget *>();
    return {calendar->yearShown(), calendar->monthShown(), 1};
}

// Where @p date stands among the days; weeks begin on Sunday.
inline QRect calendarCell(const QWidget *view, const QDate &date)
{
    const QDate first = calendarPage(view);
    const int column = first.dayOfWeek() % 7;
    // A month that begins on a Sunday leaves the first row to the month before it.
    const int position = int(first.daysTo(date)) + (column ? column : 7);
    const QTableView *days = calendarDays(view);
    return days->visualRect(days->model()->index(position / 7, position % 7));
}
