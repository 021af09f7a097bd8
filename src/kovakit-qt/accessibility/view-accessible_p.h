// SPDX-License-Identifier: MIT

#pragma once

#include "item-view_p.h"
#include "named-accessible_p.h"

#include <QAbstractItemView>
#include <QHash>
#include <QPersistentModelIndex>

// Reports a table or a tree to assistive technology: the titles, then the cells, row by row, then
// the widgets among the cells, such as the field in which one is edited.
//
// The children are numbered as Qt numbers them in the events of its views. Those that were asked
// for are kept as long as what they stand for.
class ViewAccessible : public NamedAccessible, public QAccessibleTableInterface, public ItemView
{
public:
    ViewAccessible(QAbstractItemView *view, QAccessible::Role role, QAccessible::Role cellRole);
    ~ViewAccessible() override;

    bool isValid() const override { return NamedAccessible::isValid(); }
    QAbstractItemView *view() const override;
    QHeaderView *rowHeader() const override { return nullptr; }
    QAccessibleInterface *columnTitle(int column) const override;
    bool hasMenu() const override;
    void openMenu() const override;

    [[nodiscard]] virtual QModelIndex indexAt(int row, int column) const = 0;
    // Null for what is no cell of the view.
    [[nodiscard]] QAccessibleInterface *cell(const QModelIndex &index) const;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedColumnCount() const override;
    int selectedRowCount() const override;
    int columnCount() const override;
    QList<int> selectedColumns() const override;
    QList<int> selectedRows() const override;
    bool isColumnSelected(int column) const override;
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int column) override;
    void modelChange(QAccessibleTableModelChangeEvent *event) override;

protected:
    QString shownName() const override { return {}; }
    // Whether the cell was asked for.
    [[nodiscard]] bool hasCell(const QModelIndex &index) const { return m_cells.contains(index); }

private:
    [[nodiscard]] int rowHeaderWidth() const { return rowHeader() ? 1 : 0; }
    [[nodiscard]] int cellAndTitleCount() const;
    [[nodiscard]] QWidgetList widgetsAmongCells() const;
    [[nodiscard]] QAccessibleInterface *title(Qt::Orientation orientation, int section) const;
    [[nodiscard]] QAccessibleInterface *remembered(QAccessible::Id id) const;
    void forgetRemovedCells() const;
    bool select(const QModelIndex &index, QItemSelectionModel::SelectionFlags flags);

    const QAccessible::Role m_cellRole;
    mutable QHash<QPersistentModelIndex, QAccessible::Id> m_cells;
    mutable QHash<int, QAccessible::Id> m_titles[2];
    mutable bool m_hasRemovedCells = false;
};
