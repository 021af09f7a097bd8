// SPDX-License-Identifier: MIT

#pragma once

#include "item-view_p.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QPersistentModelIndex>
#include <QPointer>

// A cell of a table or a row of a tree. The view's interface owns it.
class CellAccessible : public QAccessibleInterface,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface
{
public:
    CellAccessible(const ItemView *owner, const QModelIndex &index, QAccessible::Role role);

    [[nodiscard]] QModelIndex index() const { return m_index; }

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessible::Role role() const override { return m_role; }
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString &text) override;
    QRect rect() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void *interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface *> columnHeaderCells() const override;
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_index.column(); }
    int rowIndex() const override;
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    [[nodiscard]] bool isCheckable() const;
    void toggle();

    const ItemView *const m_owner;
    const QPointer<QAbstractItemView> m_view;
    const QPersistentModelIndex m_index;
    const QAccessible::Role m_role;
};
