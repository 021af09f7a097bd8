// SPDX-License-Identifier: MIT

#pragma once

class QAbstractItemView;
class QAccessibleInterface;
class QHeaderView;
class QModelIndex;

// What the cells and titles of a view have to know of it.
class ItemView
{
public:
    virtual ~ItemView() = default;

    // Whether the view is there and not about to go.
    [[nodiscard]] virtual bool isValid() const = 0;
    [[nodiscard]] virtual QAbstractItemView *view() const = 0;
    // The header that is seen, which may be a widget of its own, or null.
    [[nodiscard]] virtual QHeaderView *columnHeader() const = 0;
    [[nodiscard]] virtual QHeaderView *rowHeader() const = 0;
    [[nodiscard]] virtual int rowOf(const QModelIndex &index) const = 0;
    // Null for what is no column of the view.
    [[nodiscard]] virtual QAccessibleInterface *columnTitle(int column) const = 0;
    // Whether the Menu key opens a menu.
    [[nodiscard]] virtual bool hasMenu() const = 0;
    // Does what the Menu key does in the current cell.
    virtual void openMenu() const = 0;
};
