// SPDX-License-Identifier: MIT

#include "date-typing_p.h"

#include "house-calendar_p.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>

DateTyping::DateTyping(HouseCalendar *calendar, QAbstractItemView *days)
    : QObject(calendar)
    , m_calendar(calendar)
    , m_days(days)
    , m_label(new QLabel(calendar))
{
    m_label->setObjectName(QStringLiteral("qt_calendar_typed_date"));
    m_label->setTextFormat(Qt::RichText);
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setFrameShape(QFrame::Box);
    m_label->setAutoFillBackground(true);
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_label->hide();
    days->installEventFilter(this);
    days->viewport()->installEventFilter(this);
    connect(calendar, &QCalendarWidget::selectionChanged, this, &DateTyping::cancel);
    connect(calendar, &QCalendarWidget::currentPageChanged, this, &DateTyping::cancel);
}

bool DateTyping::keyPressed(const QKeyEvent *event)
{
    if (isActive() && event->key() == Qt::Key_Backspace) {
        m_date->removeLast();
        showText();
        return true;
    }
    if (isActive() && event->matches(QKeySequence::Cancel)) {
        cancel();
        return true;
    }
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    TypedDate typed = m_date.value_or(TypedDate(m_calendar->locale(), m_calendar->currentDay()));
    if (typed.append(event->text())) {
        m_date = typed;
        showText();
        return true;
    }
    if (isActive() && event->key() >= Qt::Key_Home && event->key() <= Qt::Key_PageDown)
        accept();
    return false;
}

void DateTyping::showText()
{
    if (m_date->isEmpty()) {
        cancel();
        return;
    }
    m_pause.start(m_calendar->dateEditAcceptDelay(), this);
    m_label->setText(m_date->toHtml());
    markWrong(false);
    m_label->resize(m_label->sizeHint());
    QRect place = m_label->rect();
    place.moveCenter(m_days->geometry().center());
    m_label->move(place.topLeft());
    m_label->raise();
    m_label->show();
}

void DateTyping::markWrong(bool wrong)
{
    m_label->setProperty("error", wrong);
    m_label->style()->polish(m_label);
}

bool DateTyping::accept()
{
    if (!isActive())
        return true;
    const QDate date = m_date->date();
    if (!m_calendar->isInRange(date)) {
        markWrong(true);
        return false;
    }
    cancel();
    m_calendar->setSelectedDate(date);
    return true;
}

void DateTyping::cancel()
{
    m_pause.stop();
    m_date.reset();
    m_label->hide();
}

void DateTyping::leave(Qt::FocusReason reason)
{
    // Only a user who goes on to another part means the date; the focus goes for good, too, when
    // a popup closes or the calendar is deleted.
    const bool byUser = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
                     || reason == Qt::MouseFocusReason;
    if (isActive() && !(byUser && accept()))
        cancel();
}

bool DateTyping::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::Hide:
        cancel();
        break;
    case QEvent::FocusOut:
        leave(static_cast<QFocusEvent *>(event)->reason());
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void DateTyping::timerEvent(QTimerEvent *)
{
    m_pause.stop();
    accept();
}
