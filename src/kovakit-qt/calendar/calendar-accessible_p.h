// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>

class HouseCalendar;

// A widget of which only some parts are worth knowing to assistive technology.
class PartsAccessible : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

protected:
    [[nodiscard]] virtual QWidgetList parts() const = 0;
};

// The view around a calendar, whose parts are what its layout holds. In the popup of a combo box it
// is a part of the box, as the box itself says.
class CalendarAccessible : public PartsAccessible
{
public:
    explicit CalendarAccessible(QWidget *view);

    QAccessibleInterface *parent() const override;

protected:
    QWidgetList parts() const override;
};

// Makes a calendar and its parts report themselves to assistive technology: the days as
// DaysAccessible, the buttons with what they open, the one for the year as a field with a value.
// Tells of the days that get the focus or are chosen, and of the page that is turned.
class CalendarSpeaker : public QObject
{
public:
    explicit CalendarSpeaker(HouseCalendar *calendar);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void tellOfPage();
    void tellOfDay(const QDate &date, QAccessible::Event event);

    HouseCalendar *m_calendar;
};
