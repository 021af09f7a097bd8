// SPDX-License-Identifier: MIT

#include "house-calendar_p.h"

#include "kovakit-qt/image-manager/logical-size_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>

#include <QFocusEvent>
#include <QHoverEvent>
#include <QItemSelectionModel>
#include <QPainter>
#include <QVBoxLayout>
#include <QWindow>

#include <utility>

HouseCalendar::HouseCalendar(QWidget *parent)
    : QCalendarWidget(parent)
    , m_parts(this)
{
    // As the proxy of the calendar the days would be two stops for Tab, and none at all while a
    // year is typed.
    setFocusProxy(nullptr);
    setFocusPolicy(Qt::NoFocus);
    // Its own reading of typed digits begins at today and stumbles over zeros.
    setDateEditEnabled(false);
    if (m_parts.days)
        watchDays();
    connect(this, &QCalendarWidget::currentPageChanged, this, [this] { m_underPointer = QDate(); });
    showArrows();
}

void HouseCalendar::watchDays()
{
    m_parts.days->viewport()->setAttribute(Qt::WA_Hover);
    m_parts.days->viewport()->installEventFilter(this);
    // With every turn of a page, even in a popup that is closed, the days would tell screen readers
    // that they have the focus.
    const QItemSelectionModel *cursor = m_parts.days->selectionModel();
    disconnect(cursor, SIGNAL(currentChanged(QModelIndex, QModelIndex)), m_parts.days,
               SLOT(currentChanged(QModelIndex, QModelIndex)));
    connect(cursor, &QItemSelectionModel::currentChanged, this, &HouseCalendar::moveCursor);
}

void HouseCalendar::moveCursor(const QModelIndex &current, const QModelIndex &previous)
{
    if (m_parts.days->hasFocus()) {
        QMetaObject::invokeMethod(m_parts.days, "currentChanged", Q_ARG(QModelIndex, current),
                                  Q_ARG(QModelIndex, previous));
    } else {
        updateDays();
    }
}

void HouseCalendar::insertRow(QWidget *row)
{
    if (auto *box = qobject_cast<QVBoxLayout *>(layout()))
        box->insertWidget(1, row);
}

QDate HouseCalendar::currentDay() const
{
    return m_parts.days ? dayAt(m_parts.days->currentIndex()) : QDate();
}

QDate HouseCalendar::dayAt(const QModelIndex &index) const
{
    if (!index.isValid())
        return QDate();
    const int day = index.data().toInt();
    QDate month(yearShown(), monthShown(), 1);
    if (index.row() < 2 && day > 14)
        month = month.addMonths(-1);
    else if (index.row() > 3 && day < 15)
        month = month.addMonths(1);
    return QDate(month.year(), month.month(), day);
}

QString HouseCalendar::pageText() const
{
    const QString month = m_parts.month ? m_parts.month->text() : QString();
    return (month + QLatin1Char(' ') + QString::number(yearShown())).trimmed();
}

bool HouseCalendar::isInRange(const QDate &date) const
{
    return date >= minimumDate() && date <= maximumDate();
}

bool HouseCalendar::isTypingYear() const
{
    return m_parts.yearEdit && m_parts.yearEdit->isVisible();
}

bool HouseCalendar::isOnDays(const QPoint &globalPosition) const
{
    if (!m_parts.days)
        return false;
    const QWidget *viewport = m_parts.days->viewport();
    return viewport->rect().contains(viewport->mapFromGlobal(globalPosition));
}

void HouseCalendar::focusDays(Qt::FocusReason reason)
{
    if (m_parts.days)
        m_parts.days->setFocus(reason);
}

void HouseCalendar::setChosenDay(const QDate &date)
{
    const QDate before = std::exchange(m_chosen, date);
    updateDays();
    if (date != before)
        Q_EMIT chosenDayChanged(before);
}

void HouseCalendar::choose(const QDate &date)
{
    if (!isInRange(date))
        return;
    if (isTypingYear())
        focusDays(Qt::OtherFocusReason);
    setSelectedDate(date);
    Q_EMIT activated(date);
}

void HouseCalendar::turnTo(int year, int month)
{
    QDate first(year, month, 1);
    if (!first.isValid())
        return;
    const auto monthOf = [](const QDate &date) { return QDate(date.year(), date.month(), 1); };
    first = qBound(monthOf(minimumDate()), first, monthOf(maximumDate()));
    setCurrentPage(first.year(), first.month());
}

void HouseCalendar::setTodayColor(const QColor &color)
{
    m_todayColor = color;
    updateDays();
}

void HouseCalendar::setOtherMonthColor(const QColor &color)
{
    m_otherMonthColor = color;
    updateDays();
}

void HouseCalendar::updateDays()
{
    if (m_parts.days)
        m_parts.days->viewport()->update();
}

QSize HouseCalendar::minimumSizeHint() const
{
    QSize size = layout()->totalMinimumSize();
    if (m_parts.days) {
        // The calendar's own hint reckons with letters as they are at scale 1.
        const int weeks = m_parts.days->model()->rowCount();
        const int grid = m_parts.days->minimumSizeHint().height();
        size.rheight() += qMax(0, weeks * m_parts.days->fontMetrics().height() - grid);
    }
    return size.expandedTo(QCalendarWidget::minimumSizeHint());
}

bool HouseCalendar::event(QEvent *event)
{
    if (event->type() == QEvent::LocaleChange)
        return QWidget::event(event); // NOLINT(bugprone-parent-virtual-call)
    const bool handled = QCalendarWidget::event(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        showArrows();
    return handled;
}

bool HouseCalendar::eventFilter(QObject *watched, QEvent *event)
{
    // Qt moves the focus, and with it the page, before the press arrives at the days.
    if (event->type() == QEvent::MouseButtonPress && isTypingYear()
        && watched == window()->windowHandle()
        && isOnDays(static_cast<QMouseEvent *>(event)->globalPos())) {
        m_parts.days->setFocus(Qt::MouseFocusReason);
        return true;
    }
    if (m_parts.days && watched == m_parts.days->viewport()) {
        const QDate before = m_underPointer;
        if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove)
            m_underPointer = dayAt(m_parts.days->indexAt(static_cast<QHoverEvent *>(event)->pos()));
        else if (event->type() == QEvent::HoverLeave || event->type() == QEvent::Hide)
            m_underPointer = QDate();
        if (m_underPointer != before)
            updateDays();
    }
    return QCalendarWidget::eventFilter(watched, event);
}

void HouseCalendar::focusInEvent(QFocusEvent *event)
{
    if (m_parts.days)
        m_parts.days->setFocus(event->reason());
}

void HouseCalendar::showArrows()
{
    const auto show = [](QToolButton *button, const char *image) {
        if (!button)
            return;
        const QPixmap pixmap = getGlobalImage(image, ImageManager::Default);
        button->setIcon(pixmap);
        button->setIconSize(logicalSize(pixmap));
    };
    const bool mirrored = isRightToLeft();
    show(m_parts.previousMonth, mirrored ? "bt_pagebar_nextend" : "bt_pagebar_backend");
    show(m_parts.nextMonth, mirrored ? "bt_pagebar_backend" : "bt_pagebar_nextend");
}

void HouseCalendar::paintCell(QPainter *painter, const QRect &rect, const QDate &date) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const double scale = DPIinfo::getInstance()->getDPI();
    const QRectF shape = QRectF(rect).adjusted(2 * scale, scale / 2, -2 * scale, -scale / 2);
    // The grid has filled the selected day, which is not always the chosen one.
    if (m_parts.days && date == selectedDate())
        painter->fillRect(rect, m_parts.days->palette().brush(QPalette::Base));
    paintShape(painter, shape, date);

    QFont font = m_parts.days ? m_parts.days->font() : this->font();
    font.setStrikeOut(!isInRange(date));
    QRect number = rect;
    if (date == QDate::currentDate()) {
        const double dot = 4 * scale;
        painter->setPen(Qt::NoPen);
        painter->setBrush(inkOf(date, false));
        painter->drawEllipse(
            QRectF(shape.center().x() - dot / 2, shape.bottom() - 1.5 * dot, dot, dot));
        number.translate(0, -kovaPx(2));
    }
    painter->setFont(font);
    painter->setPen(inkOf(date, date == m_underPointer));
    painter->drawText(number, Qt::AlignCenter, locale().toString(date.day()));
    painter->restore();
}

// What lies under the number: the chosen day is filled, the one under the pointer tinted, and the
// one under the keyboard's cursor has a ring.
void HouseCalendar::paintShape(QPainter *painter, const QRectF &shape, const QDate &date) const
{
    const QPalette &colors = m_parts.days ? m_parts.days->palette() : palette();
    const double scale = DPIinfo::getInstance()->getDPI();
    const double radius = 4 * scale;
    const bool choosable = isInRange(date);
    const bool chosen = choosable && date == m_chosen;
    if (chosen || (choosable && date == m_underPointer)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(colors.brush(chosen ? QPalette::Highlight : QPalette::AlternateBase));
        painter->drawRoundedRect(shape, radius, radius);
    }
    if (!m_parts.days || !m_parts.days->hasFocus() || date != currentDay())
        return;
    const double width = 2 * scale;
    const double inset = chosen ? 1.5 * width : width / 2;
    painter->setPen(
        QPen(colors.color(chosen ? QPalette::HighlightedText : QPalette::Highlight), width));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(shape.adjusted(inset, inset, -inset, -inset), radius - inset,
                             radius - inset);
}

QColor HouseCalendar::inkOf(const QDate &date, bool onTint) const
{
    const QPalette &colors = m_parts.days ? m_parts.days->palette() : palette();
    const QColor off = colors.color(QPalette::Disabled, QPalette::Text);
    if (!isEnabled() || !isInRange(date))
        return off;
    if (date == m_chosen)
        return colors.color(QPalette::HighlightedText);
    // On the tint under the pointer weaker colors would be hard to read.
    if (onTint)
        return colors.color(QPalette::Text);
    if (date == QDate::currentDate())
        return m_todayColor.isValid() ? m_todayColor : colors.color(QPalette::Link);
    if (date.month() != monthShown())
        return m_otherMonthColor.isValid() ? m_otherMonthColor : off;
    return colors.color(QPalette::Text);
}
