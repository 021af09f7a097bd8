// SPDX-License-Identifier: MIT

#pragma once

#include "view-accessible_p.h"

#include <QTableView>

// Reports a table inside an Owner, which shows the titles in a header of its own, getHeader(), and
// lends its name to the table.
template<class Owner>
class TableAccessible : public ViewAccessible
{
public:
    explicit TableAccessible(QTableView *table)
        : ViewAccessible(table, QAccessible::Table, QAccessible::Cell)
    {
    }

    QHeaderView *columnHeader() const override
    {
        QHeaderView *header = owner() ? owner()->getHeader() : nullptr;
        return header ? header : table()->horizontalHeader();
    }
    QHeaderView *rowHeader() const override { return table()->verticalHeader(); }
    int rowOf(const QModelIndex &index) const override { return index.row(); }
    QModelIndex indexAt(int row, int column) const override
    {
        const QAbstractItemModel *model = table()->model();
        return model ? model->index(row, column, table()->rootIndex()) : QModelIndex();
    }
    int rowCount() const override
    {
        const QAbstractItemModel *model = table()->model();
        return model ? model->rowCount(table()->rootIndex()) : 0;
    }

protected:
    QString shownName() const override { return owner() ? owner()->accessibleName() : QString(); }

private:
    QTableView *table() const { return static_cast<QTableView *>(object()); }
    Owner *owner() const { return qobject_cast<Owner *>(table()->parentWidget()); }
};

// The widget of a header whose titles are among the children of the table.
template<class Header>
class HeaderAccessible : public QAccessibleWidget
{
public:
    explicit HeaderAccessible(Header *header)
        : QAccessibleWidget(header, QAccessible::Pane)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = false;
        state.focused = false;
        return state;
    }
    int childCount() const override { return 0; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QStringList actionNames() const override { return {}; }
};

// Makes every Table inside an Owner, and every Header, report themselves in this way. For the
// constructor of Owner, before it makes them.
template<class Table, class Header, class Owner>
void installTableAccessibility()
{
    QAccessible::installFactory(createAccessible<Table, TableAccessible<Owner>>);
    QAccessible::installFactory(createAccessible<Header, HeaderAccessible<Header>>);
}
