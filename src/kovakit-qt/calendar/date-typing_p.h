// SPDX-License-Identifier: MIT

#pragma once

#include "typed-date_p.h"

#include <QBasicTimer>
#include <QObject>

#include <optional>

class HouseCalendar;
class QAbstractItemView;
class QKeyEvent;
class QLabel;

// Digits that are typed into a calendar, and a label over the days that shows what they mean.
//
// The calendar's cursor goes to the date that was typed when nothing has been typed for a while, or
// when the user goes on with another key. What is no date that can be chosen moves nothing.
class DateTyping : public QObject
{
public:
    DateTyping(HouseCalendar *calendar, QAbstractItemView *days);

    [[nodiscard]] bool isActive() const { return m_date.has_value(); }

    // Takes the key if it belongs to the typing.
    bool keyPressed(const QKeyEvent *event);

    // Moves the cursor to the date and ends the typing. If the date cannot be chosen, marks it as
    // wrong instead and returns false.
    bool accept();
    void cancel();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void leave(Qt::FocusReason reason);
    void showText();
    void markWrong(bool wrong);

    HouseCalendar *m_calendar;
    QAbstractItemView *m_days;
    QLabel *m_label;
    std::optional<TypedDate> m_date;
    QBasicTimer m_pause;
};
