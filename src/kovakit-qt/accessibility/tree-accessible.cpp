// SPDX-License-Identifier: MIT

#include "tree-accessible_p.h"

#include <QTreeView>

TreeAccessible::PaintWatch::PaintWatch(TreeAccessible *owner)
    : m_owner(owner)
{
}

bool TreeAccessible::PaintWatch::eventFilter(QObject *viewport, QEvent *event)
{
    if (event->type() == QEvent::Paint)
        m_owner->forgetRows();
    return QObject::eventFilter(viewport, event);
}

TreeAccessible::TreeAccessible(QTreeView *tree)
    : ViewAccessible(tree, QAccessible::Tree, QAccessible::TreeItem)
    , m_watch(this)
{
    const QAbstractItemModel *model = tree->model();
    const auto forget = [this] { forgetRows(); };
    tree->viewport()->installEventFilter(&m_watch);
    QObject::connect(tree, &QTreeView::expanded, &m_watch, forget);
    QObject::connect(tree, &QTreeView::collapsed, &m_watch, forget);
    QObject::connect(model, &QAbstractItemModel::rowsInserted, &m_watch, forget);
    QObject::connect(model, &QAbstractItemModel::rowsRemoved, &m_watch, forget);
    QObject::connect(model, &QAbstractItemModel::rowsMoved, &m_watch, forget);
    QObject::connect(model, &QAbstractItemModel::layoutChanged, &m_watch, forget);
    QObject::connect(model, &QAbstractItemModel::modelReset, &m_watch, forget);
    QObject::connect(
        model, &QAbstractItemModel::dataChanged, &m_watch,
        [this](const QModelIndex &first, const QModelIndex &last, const QVector<int> &roles) {
            if (roles.isEmpty() || roles.contains(Qt::CheckStateRole))
                tellOfCheck(first, last);
        });
}

QTreeView *TreeAccessible::tree() const
{
    return static_cast<QTreeView *>(object());
}

QHeaderView *TreeAccessible::columnHeader() const
{
    return tree()->header();
}

void TreeAccessible::forgetRows()
{
    m_rows.clear();
    m_numbers.clear();
}

const QVector<QModelIndex> &TreeAccessible::rows() const
{
    if (m_rows.isEmpty() && tree()->model())
        addRows(tree()->rootIndex());
    return m_rows;
}

void TreeAccessible::addRows(const QModelIndex &parent) const
{
    const QAbstractItemModel *model = tree()->model();
    const int count = model->rowCount(parent);
    for (int row = 0; row < count; ++row) {
        if (tree()->isRowHidden(row, parent))
            continue;
        const QModelIndex index = model->index(row, 0, parent);
        m_numbers.insert(index, m_rows.size());
        m_rows.append(index);
        if (tree()->isExpanded(index))
            addRows(index);
    }
}

int TreeAccessible::rowOf(const QModelIndex &index) const
{
    return rows().isEmpty() ? -1 : m_numbers.value(index.siblingAtColumn(0), -1);
}

QModelIndex TreeAccessible::indexAt(int row, int column) const
{
    return rows().value(row).siblingAtColumn(column);
}

int TreeAccessible::rowCount() const
{
    return rows().size();
}

void TreeAccessible::tellOfCheck(const QModelIndex &first, const QModelIndex &last) const
{
    QAccessible::State changed;
    changed.checked = true;
    changed.checkStateMixed = true;
    for (int row = first.row(); row <= last.row(); ++row) {
        for (int column = first.column(); column <= last.column(); ++column) {
            const QModelIndex index = first.sibling(row, column);
            // Whoever never asked for a row need not hear of it.
            if (!hasCell(index) || !index.data(Qt::CheckStateRole).isValid())
                continue;
            QAccessibleStateChangeEvent event(cell(index), changed);
            QAccessible::updateAccessibility(&event);
        }
    }
}
