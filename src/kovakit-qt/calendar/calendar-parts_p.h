// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>

class QCalendarWidget;

// The children that a QCalendarWidget is made of. It gives no other access to them than the names
// that they have in Qt 5; a part that another version names differently is null.
struct CalendarParts
{
    explicit CalendarParts(const QCalendarWidget *calendar);

    QPointer<QWidget> navigationBar;
    QPointer<QToolButton> previousMonth;
    QPointer<QToolButton> nextMonth;
    QPointer<QToolButton> month;
    QPointer<QToolButton> year;
    QPointer<QSpinBox> yearEdit;
    QPointer<QTableView> days;
};
