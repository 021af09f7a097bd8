// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>
#include <QDate>
#include <QHash>

class HouseCalendar;
class QTableView;

// The days of a calendar as assistive technology meets them: a table with the weekdays as headers
// of its columns, named after the month and year on show. Each day is named by its full date in the
// language of the calendar's locale, is selected if it is the chosen one, described as today if it
// is that, and can be pressed unless it is out of range.
//
// A day stands for its date, not for a place in the table: when the page turns, nobody is left with
// the old name of what has become another day.
class DaysAccessible : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    // @p days belongs to @p calendar.
    DaysAccessible(QTableView *days, HouseCalendar *calendar);
    ~DaysAccessible() override;

    QString text(QAccessible::Text kind) const override;
    void *interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

    QAccessibleInterface *cellAt(int row, int column) const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return QString(); }
    int columnCount() const override;
    int rowCount() const override;
    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    // Days are chosen one by one.
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    // Lets go of the days that are no longer on the page.
    void modelChange(QAccessibleTableModelChangeEvent *event) override;

    [[nodiscard]] HouseCalendar *calendar() const { return m_calendar; }
    [[nodiscard]] QTableView *days() const;
    [[nodiscard]] QAccessibleInterface *header(int index) const;
    // The place of @p date on the page, row by row; negative if it is not there.
    [[nodiscard]] int placeOf(const QDate &date) const;
    // The day @p date, which has to be on the page.
    [[nodiscard]] QAccessibleInterface *day(const QDate &date) const;

private:
    HouseCalendar *m_calendar;
    mutable QHash<QDate, QAccessible::Id> m_days;
    mutable QHash<int, QAccessible::Id> m_headers;
};
