#include "house-calendar_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>

#include <QFocusEvent>
#include <QPainter>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

HouseCalendar::HouseCalendar(QWidget *parent)
    : QCalendarWidget(parent)
    , m_grid(findChild<QTableView *>(QStringLiteral("qt_calendar_calendarview")))
{
    // As the proxy of the calendar the days would be two stops for Tab, and none at all while a
    // year is typed.
    setFocusProxy(nullptr);
    setFocusPolicy(Qt::NoFocus);
    // Its own reading of typed digits begins at today and stumbles over zeros.
    setDateEditEnabled(false);
    showArrows();
}

void HouseCalendar::insertRow(QWidget *row)
{
    if (auto *box = qobject_cast<QVBoxLayout *>(layout()))
        box->insertWidget(1, row);
}

QDate HouseCalendar::currentDay() const
{
    const QModelIndex index = m_grid ? m_grid->currentIndex() : QModelIndex();
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

bool HouseCalendar::isInRange(const QDate &date) const
{
    return date >= minimumDate() && date <= maximumDate();
}

bool HouseCalendar::isTypingYear() const
{
    const auto *yearEdit = findChild<QSpinBox *>(QStringLiteral("qt_calendar_yearedit"));
    return yearEdit && yearEdit->isVisible();
}

bool HouseCalendar::isOnDays(const QPoint &globalPosition) const
{
    if (!m_grid)
        return false;
    const QWidget *viewport = m_grid->viewport();
    return viewport->rect().contains(viewport->mapFromGlobal(globalPosition));
}

QSize HouseCalendar::minimumSizeHint() const
{
    QSize size = layout()->totalMinimumSize();
    if (m_grid) {
        // The calendar's own hint reckons with letters as they are at scale 1.
        const int weeks = m_grid->model()->rowCount();
        const int grid = m_grid->minimumSizeHint().height();
        size.rheight() += qMax(0, weeks * m_grid->fontMetrics().height() - grid);
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
        m_grid->setFocus(Qt::MouseFocusReason);
        return true;
    }
    return QCalendarWidget::eventFilter(watched, event);
}

void HouseCalendar::focusInEvent(QFocusEvent *event)
{
    if (m_grid)
        m_grid->setFocus(event->reason());
}

void HouseCalendar::showArrows()
{
    const double ratio = DPIinfo::getInstance()->getDPR();
    const auto show = [&](const char *name, const char *image) {
        auto *button = findChild<QToolButton *>(QLatin1String(name));
        if (!button)
            return;
        const QPixmap pixmap = getGlobalImage(image, ImageManager::Default);
        button->setIcon(pixmap);
        button->setIconSize(QSize(qRound(pixmap.width() / ratio), qRound(pixmap.height() / ratio)));
    };
    const bool mirrored = isRightToLeft();
    show("qt_calendar_prevmonth", mirrored ? "bt_pagebar_nextend" : "bt_pagebar_backend");
    show("qt_calendar_nextmonth", mirrored ? "bt_pagebar_backend" : "bt_pagebar_nextend");
}

void HouseCalendar::paintCell(QPainter *painter, const QRect &rect, const QDate &date) const
{
    const QPalette &colors = m_grid ? m_grid->palette() : palette();
    painter->save();
    if (isInRange(date)) {
        QCalendarWidget::paintCell(painter, rect, date);
    } else {
        painter->fillRect(rect, colors.brush(QPalette::AlternateBase));
        QFont font = painter->font();
        font.setStrikeOut(true);
        painter->setFont(font);
        painter->setPen(colors.color(QPalette::Disabled, QPalette::Text));
        painter->drawText(rect, Qt::AlignCenter, locale().toString(date.day()));
    }
    if (m_grid && m_grid->hasFocus() && date == currentDay())
        paintRing(painter, rect, m_grid->selectionModel()->isSelected(m_grid->currentIndex()));
    painter->restore();
}

void HouseCalendar::paintRing(QPainter *painter, const QRect &rect, bool selected) const
{
    const QPalette::ColorRole role = selected ? QPalette::HighlightedText : QPalette::Highlight;
    const int width = qMax(1, kovaPx(2));
    const double inset = selected ? width : width / 2.0;
    painter->setPen(QPen(m_grid->palette().color(role), width));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(rect).adjusted(inset, inset, -inset, -inset));
}
