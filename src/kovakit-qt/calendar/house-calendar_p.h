// SPDX-License-Identifier: MIT

#pragma once

#include "calendar-parts_p.h"

#include <QCalendarWidget>
#include <QColor>
#include <QDate>

class QModelIndex;

// A calendar whose parts can be dressed without its undoing it: no change of the locale brings its
// own names and first day of the week back. It paints its days itself, so that today, the chosen
// day, the day under the keyboard's cursor, that under the pointer and those that cannot be chosen
// have marks of their own. The chosen day is not always the selected one, which is where the cursor
// was moved to.
class HouseCalendar : public QCalendarWidget
{
    Q_OBJECT

public:
    explicit HouseCalendar(QWidget *parent);

    [[nodiscard]] const CalendarParts &parts() const { return m_parts; }

    // Puts @p row between the navigation bar and the days.
    void insertRow(QWidget *row);

    // The day in the cell @p index of the days; an invalid date if there is none.
    [[nodiscard]] QDate dayAt(const QModelIndex &index) const;

    // The day under the keyboard's cursor. It is not always the selected one: turning the page
    // leaves the selection behind.
    [[nodiscard]] QDate currentDay() const;

    // The month and the year that are shown, in words.
    [[nodiscard]] QString pageText() const;

    [[nodiscard]] bool isInRange(const QDate &date) const;

    [[nodiscard]] bool isTypingYear() const;

    // Gives the days the keyboard focus, which the calendar itself never takes.
    void focusDays(Qt::FocusReason reason);

    // The day that is shown as chosen; an invalid date if none is.
    void setChosenDay(const QDate &date);
    [[nodiscard]] QDate chosenDay() const { return m_chosen; }

    // Goes to @p date and emits activated(), unless it is out of range.
    void choose(const QDate &date);

    // Turns to this month, or to the nearest one with a day that can be chosen. A month that does
    // not exist changes nothing.
    void turnTo(int year, int month);

    // What screen readers say of today beside its date.
    void setTodayText(const QString &text) { m_todayText = text; }
    [[nodiscard]] QString todayText() const { return m_todayText; }

    // An invalid color gives the one of the palette again: that of links for today, that of
    // disabled text for the days of the neighbouring months.
    void setTodayColor(const QColor &color);
    void setOtherMonthColor(const QColor &color);
    [[nodiscard]] QColor todayColor() const { return m_todayColor; }
    [[nodiscard]] QColor otherMonthColor() const { return m_otherMonthColor; }

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    // Another day is shown as chosen than @p before.
    void chosenDayChanged(const QDate &before);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void paintCell(QPainter *painter, const QRect &rect, const QDate &date) const override;

private:
    void watchDays();
    void moveCursor(const QModelIndex &current, const QModelIndex &previous);
    void showArrows();
    void updateDays();
    [[nodiscard]] bool isOnDays(const QPoint &globalPosition) const;
    [[nodiscard]] QColor inkOf(const QDate &date, bool onTint) const;
    void paintShape(QPainter *painter, const QRectF &shape, const QDate &date) const;

    const CalendarParts m_parts;
    QDate m_chosen;
    QDate m_underPointer;
    QString m_todayText;
    QColor m_todayColor;
    QColor m_otherMonthColor;
};
