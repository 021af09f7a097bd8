// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class DateTyping;
class HouseCalendar;
class QKeyEvent;
class QTableView;

// What a calendar lacks for keyboards. Return chooses the day under the cursor, wherever the page
// was turned to, and presses the button that has the focus; Space chooses a day too; digits type a
// date; on the button for the year, digits and Up and Down begin to edit it; the focus of the arrow
// buttons can be seen. A popup around the calendar sees none of these
// keys, and Escape only when there is no typing to be given up first.
class CalendarKeys : public QObject
{
public:
    explicit CalendarKeys(HouseCalendar *calendar);

    // Return on @p button, which is outside the calendar, presses it.
    void addButton(QWidget *button);

    // On @p frame, which is around the calendar, the keys of the days go to the days, and the focus
    // with them.
    void addFrame(QWidget *frame);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool keyPressed(QObject *watched, QKeyEvent *event);
    bool passOn(QObject *watched, QKeyEvent *event);
    [[nodiscard]] bool isTyping() const;

    HouseCalendar *m_calendar;
    QTableView *m_days;
    DateTyping *m_typing;
    QObject *m_arrows[2];
    QWidget *m_frame = nullptr;
};
