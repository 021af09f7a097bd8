// SPDX-License-Identifier: MIT

#include "cell-accessible_p.h"

#include <QAbstractItemModel>
#include <QTreeView>

namespace {

const QString expandAction = QStringLiteral("Expand");
const QString collapseAction = QStringLiteral("Collapse");

} // namespace

CellAccessible::CellAccessible(const ItemView *owner, const QModelIndex &index,
                               QAccessible::Role role)
    : m_owner(owner)
    , m_view(owner->view())
    , m_index(index)
    , m_role(role)
{
}

bool CellAccessible::isValid() const
{
    return m_view && m_index.isValid() && m_owner->isValid() && m_view->model() == m_index.model();
}

QWindow *CellAccessible::window() const
{
    return parent()->window();
}

QAccessible::State CellAccessible::state() const
{
    QAccessible::State state;
    if (!isValid())
        return state;
    const QRect place = m_view->visualRect(m_index);
    const Qt::ItemFlags flags = m_index.flags();
    state.invisible = !m_view->isVisible() || !place.isValid();
    state.offscreen = !place.intersects(m_view->viewport()->rect());
    state.disabled = !m_view->isEnabled() || !(flags & Qt::ItemIsEnabled);
    state.selectable = bool(flags & Qt::ItemIsSelectable);
    state.selected = isSelected();
    state.focusable = !state.disabled;
    state.focused = m_view->hasFocus() && m_view->currentIndex() == m_index;
    state.multiSelectable = m_view->selectionMode() == QAbstractItemView::MultiSelection;
    state.extSelectable = m_view->selectionMode() == QAbstractItemView::ExtendedSelection;
    state.editable = m_view->editTriggers() && (flags & Qt::ItemIsEditable);
    state.checkable = isCheckable();
    const QVariant check = m_index.data(Qt::CheckStateRole);
    state.checked = check.toInt() == Qt::Checked;
    state.checkStateMixed = check.toInt() == Qt::PartiallyChecked;
    if (const auto *tree = qobject_cast<QTreeView *>(m_view)) {
        const bool hasChildren = tree->model()->hasChildren(m_index);
        state.expandable = hasChildren;
        state.expanded = hasChildren && tree->isExpanded(m_index);
        state.collapsed = hasChildren && !tree->isExpanded(m_index);
    }
    return state;
}

QString CellAccessible::text(QAccessible::Text kind) const
{
    if (!isValid())
        return {};
    if (kind == QAccessible::Description)
        return m_index.data(Qt::AccessibleDescriptionRole).toString();
    if (kind != QAccessible::Name)
        return {};
    const QString name = m_index.data(Qt::AccessibleTextRole).toString();
    return name.isEmpty() ? m_index.data().toString() : name;
}

void CellAccessible::setText(QAccessible::Text, const QString &text)
{
    if (isValid() && (m_index.flags() & Qt::ItemIsEditable))
        m_view->model()->setData(m_index, text);
}

QRect CellAccessible::rect() const
{
    if (!isValid())
        return {};
    const QRect place = m_view->visualRect(m_index);
    return {m_view->viewport()->mapToGlobal(place.topLeft()), place.size()};
}

QAccessibleInterface *CellAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(m_view);
}

void *CellAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface *>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    return nullptr;
}

bool CellAccessible::isSelected() const
{
    return isValid() && m_view->selectionModel()->isSelected(m_index);
}

QList<QAccessibleInterface *> CellAccessible::columnHeaderCells() const
{
    QAccessibleInterface *title = isValid() ? m_owner->columnTitle(m_index.column()) : nullptr;
    return title ? QList<QAccessibleInterface *>{title} : QList<QAccessibleInterface *>();
}

int CellAccessible::rowIndex() const
{
    return isValid() ? m_owner->rowOf(m_index) : -1;
}

bool CellAccessible::isCheckable() const
{
    return (m_index.flags() & Qt::ItemIsUserCheckable)
        && m_index.data(Qt::CheckStateRole).isValid();
}

QStringList CellAccessible::actionNames() const
{
    if (!isValid())
        return {};
    const QAccessible::State now = state();
    QStringList names;
    if (now.disabled)
        return names;
    if (now.checkable)
        names << toggleAction();
    if (now.collapsed)
        names << expandAction;
    if (now.expanded)
        names << collapseAction;
    if (now.selectable && m_view->selectionMode() != QAbstractItemView::NoSelection)
        names << pressAction();
    if (m_view->focusPolicy() != Qt::NoFocus)
        names << setFocusAction();
    if (m_owner->hasMenu())
        names << showMenuAction();
    return names;
}

void CellAccessible::doAction(const QString &name)
{
    if (!actionNames().contains(name))
        return;
    auto *tree = qobject_cast<QTreeView *>(m_view);
    if (name == toggleAction()) {
        toggle();
    } else if (name == expandAction || name == collapseAction) {
        tree->setExpanded(m_index, name == expandAction);
    } else if (name == pressAction()) {
        m_view->setCurrentIndex(m_index);
    } else if (name == setFocusAction()) {
        m_view->setFocus(Qt::OtherFocusReason);
        m_view->setCurrentIndex(m_index);
    } else if (name == showMenuAction()) {
        m_view->setCurrentIndex(m_index);
        m_owner->openMenu();
    }
}

void CellAccessible::toggle()
{
    const int before = m_index.data(Qt::CheckStateRole).toInt();
    int after = before == Qt::Checked ? Qt::Unchecked : Qt::Checked;
    if (m_index.flags() & Qt::ItemIsUserTristate)
        after = (before + 1) % 3;
    m_view->model()->setData(m_index, after, Qt::CheckStateRole);
}
