// SPDX-License-Identifier: MIT

#include "view-accessible_p.h"

#include "cell-accessible_p.h"
#include "header-control_p.h"
#include "title-accessible_p.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>

namespace {

template<class Interface>
QAccessible::Id registered(Interface *interface)
{
    return QAccessible::registerAccessibleInterface(interface);
}

// What the user's key does, when the caller has its answer: a menu may run a loop of its own.
void pressMenuKey(QAbstractItemView *view)
{
    const QPointer<QAbstractItemView> guard(view);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Menu, Qt::NoModifier);
    QCoreApplication::sendEvent(view, &press);
    if (!guard || QApplication::activePopupWidget())
        return;
    const QPoint row = view->visualRect(view->currentIndex()).center();
    const QPoint place = view->viewport()->mapTo(view, row);
    QContextMenuEvent request(QContextMenuEvent::Keyboard, place, view->mapToGlobal(place));
    QCoreApplication::sendEvent(view, &request);
}

} // namespace

ViewAccessible::ViewAccessible(QAbstractItemView *view, QAccessible::Role role,
                               QAccessible::Role cellRole)
    : NamedAccessible(view, role)
    , m_cellRole(cellRole)
{
}

ViewAccessible::~ViewAccessible()
{
    const auto drop = [](const auto &children) {
        for (const QAccessible::Id id : children)
            QAccessible::deleteAccessibleInterface(id);
    };
    drop(m_cells);
    drop(m_titles[0]);
    drop(m_titles[1]);
}

QAbstractItemView *ViewAccessible::view() const
{
    return static_cast<QAbstractItemView *>(object());
}

bool ViewAccessible::hasMenu() const
{
    return view()->contextMenuPolicy() == Qt::CustomContextMenu
        || (view()->contextMenuPolicy() == Qt::ActionsContextMenu && !view()->actions().isEmpty());
}

void ViewAccessible::openMenu() const
{
    QAbstractItemView *target = view();
    QMetaObject::invokeMethod(
        target, [target] { pressMenuKey(target); }, Qt::QueuedConnection);
}

// Children

int ViewAccessible::cellAndTitleCount() const
{
    return (rowCount() + 1) * (columnCount() + rowHeaderWidth());
}

QWidgetList ViewAccessible::widgetsAmongCells() const
{
    QWidgetList widgets;
    const auto all =
        view()->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *widget : all) {
        if (!widget->isWindow() && widget->isVisible())
            widgets << widget;
    }
    return widgets;
}

int ViewAccessible::childCount() const
{
    return cellAndTitleCount() + widgetsAmongCells().size();
}

QAccessibleInterface *ViewAccessible::child(int index) const
{
    const int columns = columnCount() + rowHeaderWidth();
    const int beyond = index - cellAndTitleCount();
    if (beyond >= 0)
        return QAccessible::queryAccessibleInterface(widgetsAmongCells().value(beyond));
    if (index < 0 || columns == 0)
        return nullptr;
    const int row = index / columns - 1;
    const int column = index % columns - rowHeaderWidth();
    if (row < 0)
        return title(Qt::Horizontal, column);
    return column < 0 ? title(Qt::Vertical, row) : cellAt(row, column);
}

int ViewAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    if (!child)
        return -1;
    const int columns = columnCount() + rowHeaderWidth();
    if (const auto *cell = dynamic_cast<const CellAccessible *>(child)) {
        const int row = rowOf(cell->index());
        return row < 0 ? -1 : (row + 1) * columns + rowHeaderWidth() + cell->columnIndex();
    }
    if (const auto *title = dynamic_cast<const TitleAccessible *>(child))
        return title->orientation() == Qt::Horizontal ? rowHeaderWidth() + title->section()
                                                      : (title->section() + 1) * columns;
    const int widget = widgetsAmongCells().indexOf(qobject_cast<QWidget *>(child->object()));
    return widget < 0 ? -1 : cellAndTitleCount() + widget;
}

QAccessibleInterface *ViewAccessible::childAt(int x, int y) const
{
    const QPoint place(x, y);
    QHeaderView *header = columnHeader();
    if (header && header->isVisible()) {
        const QPoint inHeader = header->viewport()->mapFromGlobal(place);
        if (header->viewport()->rect().contains(inHeader))
            return columnTitle(header->logicalIndexAt(inHeader));
    }
    const QPoint inViewport = view()->viewport()->mapFromGlobal(place);
    for (QWidget *widget : widgetsAmongCells()) {
        if (widget->geometry().contains(inViewport))
            return QAccessible::queryAccessibleInterface(widget);
    }
    return cell(view()->indexAt(inViewport));
}

QAccessibleInterface *ViewAccessible::focusChild() const
{
    QHeaderView *header = columnHeader();
    const auto *keys = dynamic_cast<const HeaderControl *>(header);
    if (keys && header->hasFocus())
        return columnTitle(keys->cursorSection());
    if (view()->hasFocus())
        return cell(view()->currentIndex());
    return NamedAccessible::focusChild();
}

QAccessibleInterface *ViewAccessible::remembered(QAccessible::Id id) const
{
    return id ? QAccessible::accessibleInterface(id) : nullptr;
}

QAccessibleInterface *ViewAccessible::cell(const QModelIndex &index) const
{
    forgetRemovedCells();
    if (!index.isValid())
        return nullptr;
    QAccessible::Id &id = m_cells[index];
    if (!id)
        id = registered(new CellAccessible(this, index, m_cellRole));
    return remembered(id);
}

QAccessibleInterface *ViewAccessible::columnTitle(int column) const
{
    return column >= 0 && column < columnCount() ? title(Qt::Horizontal, column) : nullptr;
}

QAccessibleInterface *ViewAccessible::title(Qt::Orientation orientation, int section) const
{
    QAccessible::Id &id = m_titles[orientation == Qt::Horizontal ? 0 : 1][section];
    if (!id)
        id = registered(new TitleAccessible(this, orientation, section));
    return remembered(id);
}

void ViewAccessible::modelChange(QAccessibleTableModelChangeEvent *event)
{
    if (event->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged)
        m_hasRemovedCells = true;
}

void ViewAccessible::forgetRemovedCells() const
{
    if (!m_hasRemovedCells)
        return;
    m_hasRemovedCells = false;
    for (auto it = m_cells.begin(); it != m_cells.end();) {
        if (it.key().isValid()) {
            ++it;
        } else {
            QAccessible::deleteAccessibleInterface(it.value());
            it = m_cells.erase(it);
        }
    }
}

void *ViewAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface *>(this);
    return NamedAccessible::interface_cast(type);
}

QStringList ViewAccessible::actionNames() const
{
    QStringList names = NamedAccessible::actionNames();
    if (view()->isEnabled() && hasMenu() && !names.contains(showMenuAction()))
        names << showMenuAction();
    return names;
}

void ViewAccessible::doAction(const QString &name)
{
    if (name != showMenuAction())
        NamedAccessible::doAction(name);
    else if (actionNames().contains(name))
        openMenu();
}

// The table

QAccessibleInterface *ViewAccessible::cellAt(int row, int column) const
{
    return cell(indexAt(row, column));
}

int ViewAccessible::columnCount() const
{
    return view()->model() ? view()->model()->columnCount(view()->rootIndex()) : 0;
}

QString ViewAccessible::columnDescription(int column) const
{
    const QAccessibleInterface *title = columnTitle(column);
    return title ? title->text(QAccessible::Name) : QString();
}

QString ViewAccessible::rowDescription(int row) const
{
    return rowHeader() ? view()->model()->headerData(row, Qt::Vertical).toString() : QString();
}

int ViewAccessible::selectedCellCount() const
{
    return view()->selectionModel()->selectedIndexes().size();
}

QList<QAccessibleInterface *> ViewAccessible::selectedCells() const
{
    QList<QAccessibleInterface *> cells;
    for (const QModelIndex &index : view()->selectionModel()->selectedIndexes())
        cells << cell(index);
    return cells;
}

int ViewAccessible::selectedColumnCount() const
{
    return selectedColumns().size();
}

int ViewAccessible::selectedRowCount() const
{
    return selectedRows().size();
}

QList<int> ViewAccessible::selectedColumns() const
{
    QList<int> columns;
    for (const QModelIndex &index : view()->selectionModel()->selectedColumns())
        columns << index.column();
    return columns;
}

QList<int> ViewAccessible::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : view()->selectionModel()->selectedRows())
        rows << rowOf(index);
    return rows;
}

bool ViewAccessible::isColumnSelected(int column) const
{
    return view()->selectionModel()->isColumnSelected(column, view()->rootIndex());
}

bool ViewAccessible::isRowSelected(int row) const
{
    const QModelIndex index = indexAt(row, 0);
    return index.isValid() && view()->selectionModel()->isRowSelected(index.row(), index.parent());
}

bool ViewAccessible::select(const QModelIndex &index, QItemSelectionModel::SelectionFlags flags)
{
    const QAbstractItemView::SelectionMode mode = view()->selectionMode();
    const bool isAlone = mode == QAbstractItemView::SingleSelection
                      || mode == QAbstractItemView::ContiguousSelection;
    if (!index.isValid() || !view()->isEnabled() || mode == QAbstractItemView::NoSelection)
        return false;
    if (isAlone && (flags & QItemSelectionModel::Select))
        flags |= QItemSelectionModel::Clear;
    view()->selectionModel()->setCurrentIndex(index, flags);
    return true;
}

bool ViewAccessible::selectRow(int row)
{
    return view()->selectionBehavior() != QAbstractItemView::SelectColumns
        && select(indexAt(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

bool ViewAccessible::selectColumn(int column)
{
    return view()->selectionBehavior() != QAbstractItemView::SelectRows
        && select(indexAt(0, column), QItemSelectionModel::Select | QItemSelectionModel::Columns);
}

bool ViewAccessible::unselectRow(int row)
{
    return select(indexAt(row, 0), QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
}

bool ViewAccessible::unselectColumn(int column)
{
    return view()->selectionBehavior() != QAbstractItemView::SelectRows
        && select(indexAt(0, column), QItemSelectionModel::Deselect | QItemSelectionModel::Columns);
}
