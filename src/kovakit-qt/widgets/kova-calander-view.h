// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QAbstractItemView>
#include <QColor>
#include <QDate>

#include <memory>

class QAction;

/**
 * A calendar in the look of the house: a month of days under the host's own names for months and
 * weekdays, weeks from Sunday, and a button for today. The chosen day is filled, today has a dot,
 * the day under the keyboard's cursor a ring; days that cannot be chosen are struck out.
 *
 * It is an item view only so that it can be the popup of a combo box; for a field with a date use
 * KovaDateSelector, which is made that way. Any layout can hold it as well. It has no items, model
 * or selection of its own.
 *
 * By keyboard: arrows, Home, End, Page Up and Page Down walk through days and months, Return, Enter
 * and Space choose the day. Digits type a date in the order of the locale, which is shown over the
 * days: one or two are a day of the month that is shown, four a day and a month, six or eight a
 * whole date. Tab walks from the days to the button for today, the calendar as a whole, where the
 * keys of the days go to the days, the arrows for the month, the month's menu and the year, where
 * Return opens what a click opens and digits, Up and Down begin to edit.
 *
 * Assistive technology meets the days as a table whose cells are named by their full dates in the
 * language of the widget's locale(), which the host sets if it is not that of the system. The
 * string "accessible_calendar_year" ("Year") names the year; without it the number has to do.
 *
 * The host must have loaded pictures, style files and strings. Texts stay as they were when the
 * view was built.
 */
class KOVAKIT_EXPORT KovaCalanderView : public QAbstractItemView
{
    Q_OBJECT
    /** The colour of today's number and of the dot under it; invalid: that of links. */
    Q_PROPERTY(QColor todayColor READ todayColor WRITE setTodayColor)
    /** The colour of the days of the neighbouring months; invalid: that of disabled text. */
    Q_PROPERTY(QColor otherMonthColor READ otherMonthColor WRITE setOtherMonthColor)

public:
    /** A calendar that shows the month of today; @p parent owns it. */
    explicit KovaCalanderView(QWidget *parent);

    ~KovaCalanderView() override;

    /**
     * Turns to the month @p month, 1 to 12, of @p year, or to the nearest month with a day that can
     * be chosen. A month that does not exist changes nothing.
     */
    void setCurrentPage(int year, int month);

    /**
     * Shows @p date as chosen and turns to its month, without sigDateSelect().
     *
     * A date that cannot be chosen changes nothing. At first no day is shown as chosen.
     */
    void setSelectedDate(const QDate &date);

    /**
     * The first day that can be chosen, at first the first day of the year 1.
     *
     * Days before it are struck out. An invalid date changes nothing; one after the maximum moves
     * the maximum along. The years stay between 1 and 9999.
     */
    void setMinimumDate(const QDate &date);

    /** The last day that can be chosen, at first that of the year 9999; else like the first. */
    void setMaximumDate(const QDate &date);

    /** The colour of today's number; invalid as long as it is that of the palette's links. */
    [[nodiscard]] QColor todayColor() const;
    /**
     * Sets the colour of today's number and dot. A style sheet, which cannot name the role of
     * links, sets it as "qproperty-todayColor".
     */
    void setTodayColor(const QColor &color);

    /** The colour of the neighbouring months' days; invalid as long as it is the palette's. */
    [[nodiscard]] QColor otherMonthColor() const;
    /** Sets that colour; "qproperty-otherMonthColor" in a style sheet. */
    void setOtherMonthColor(const QColor &color);

    /** The room that the calendar asks for. */
    QSize sizeHint() const override;
    /** The least room that all of it fits in. */
    QSize minimumSizeHint() const override;

    /** An empty rectangle: there are no items. */
    QRect visualRect(const QModelIndex &index) const override;
    /** Does nothing. */
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    /** An invalid index. */
    QModelIndex indexAt(const QPoint &point) const override;

Q_SIGNALS:
    /**
     * The user chose @p date: clicked on it, pressed Return on it, or pressed the button for today.
     * Never a day that cannot be chosen, and not when the selection merely moves.
     */
    void sigDateSelect(const QDate &date);

public Q_SLOTS:
    /** Selects today and emits sigDateSelect(), unless today cannot be chosen. */
    void selectToday();

    /** Shows the full name of @p month, 1 to 12; called whenever the page was turned. */
    void pageChanged(int year, int month);

    /** Shows the full name of the month whose number is the data of @p action. */
    void slotMonthTriggered(QAction *action);

protected:
    /** An invalid index. */
    QModelIndex moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) override;
    /** Zero. */
    int horizontalOffset() const override;
    /** Zero. */
    int verticalOffset() const override;
    /** True. */
    bool isIndexHidden(const QModelIndex &index) const override;
    /** Does nothing. */
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    /** An empty region. */
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;

    /** Keeps clicks beside the calendar's parts from what is around it, such as a popup. */
    bool event(QEvent *event) override;
    /** Walks through the calendar's parts with Tab and Shift+Tab, and tells of a clicked day. */
    bool eventFilter(QObject *object, QEvent *event) override;
    /** Looks whether today can be chosen. */
    void showEvent(QShowEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
