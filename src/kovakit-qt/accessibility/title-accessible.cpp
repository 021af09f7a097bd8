// SPDX-License-Identifier: MIT

#include "title-accessible_p.h"

#include "header-control_p.h"

#include "kovakit-qt/utils/component-strings_p.h"

#include <QHeaderView>

QString sortedDescription(const QHeaderView *header, int section)
{
    if (!header->isSortIndicatorShown() || header->sortIndicatorSection() != section)
        return {};
    return header->sortIndicatorOrder() == Qt::AscendingOrder
             ? componentString("accessible_ascending", "Sorted ascending")
             : componentString("accessible_descending", "Sorted descending");
}

TitleAccessible::TitleAccessible(const ItemView *owner, Qt::Orientation orientation, int section)
    : m_owner(owner)
    , m_view(owner->view())
    , m_orientation(orientation)
    , m_section(section)
{
}

QHeaderView *TitleAccessible::header() const
{
    return m_orientation == Qt::Horizontal ? m_owner->columnHeader() : m_owner->rowHeader();
}

HeaderControl *TitleAccessible::control() const
{
    return isValid() && header()->isEnabled() ? dynamic_cast<HeaderControl *>(header()) : nullptr;
}

bool TitleAccessible::isValid() const
{
    return m_view && m_owner->isValid() && header() && m_section < header()->count();
}

QWindow *TitleAccessible::window() const
{
    return parent()->window();
}

QAccessible::Role TitleAccessible::role() const
{
    if (m_section < 0)
        return QAccessible::Pane;
    return m_orientation == Qt::Horizontal ? QAccessible::ColumnHeader : QAccessible::RowHeader;
}

QAccessible::State TitleAccessible::state() const
{
    QAccessible::State state;
    if (!isValid())
        return state;
    state.invisible =
        m_section < 0 || !header()->isVisible() || header()->isSectionHidden(m_section);
    state.disabled = !header()->isEnabled();
    if (const HeaderControl *keys = control()) {
        state.focusable = header()->focusPolicy() != Qt::NoFocus;
        state.focused = header()->hasFocus() && keys->cursorSection() == m_section;
        state.sizeable = keys->canResizeSection(m_section);
    }
    return state;
}

QString TitleAccessible::text(QAccessible::Text kind) const
{
    if (!isValid() || m_section < 0)
        return {};
    const auto data = [this](int role) {
        return header()->model()->headerData(m_section, m_orientation, role).toString();
    };
    if (kind == QAccessible::Name) {
        const QString name = data(Qt::AccessibleTextRole);
        return name.isEmpty() ? data(Qt::DisplayRole) : name;
    }
    if (kind == QAccessible::Description) {
        const QString description = data(Qt::AccessibleDescriptionRole);
        return description.isEmpty() ? sortedDescription(header(), m_section) : description;
    }
    return {};
}

QRect TitleAccessible::rect() const
{
    if (!isValid() || m_section < 0)
        return {};
    const int begin = header()->sectionViewportPosition(m_section);
    const int size = header()->sectionSize(m_section);
    const QWidget *viewport = header()->viewport();
    const QRect place = m_orientation == Qt::Horizontal ? QRect(begin, 0, size, viewport->height())
                                                        : QRect(0, begin, viewport->width(), size);
    return {viewport->mapToGlobal(place.topLeft()), place.size()};
}

QAccessibleInterface *TitleAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(m_view);
}

void *TitleAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    if (type == QAccessible::ValueInterface && canResize())
        return static_cast<QAccessibleValueInterface *>(this);
    return nullptr;
}

bool TitleAccessible::canResize() const
{
    const HeaderControl *keys = control();
    return keys && keys->canResizeSection(m_section);
}

QStringList TitleAccessible::actionNames() const
{
    QStringList names;
    const HeaderControl *keys = control();
    if (!keys)
        return names;
    if (keys->canPressSection(m_section))
        names << pressAction();
    if (keys->canResizeSection(m_section))
        names << increaseAction() << decreaseAction();
    if (header()->focusPolicy() != Qt::NoFocus)
        names << setFocusAction();
    return names;
}

void TitleAccessible::doAction(const QString &name)
{
    if (!actionNames().contains(name))
        return;
    HeaderControl *keys = control();
    const int section = m_section;
    if (name == pressAction()) {
        // Sorting takes its time, and whoever asked waits for the answer.
        QMetaObject::invokeMethod(
            header(), [keys, section] { keys->pressSection(section); }, Qt::QueuedConnection);
    } else if (name == setFocusAction()) {
        keys->focusSection(section);
    } else {
        keys->widenSection(section, name == increaseAction() ? 1 : -1);
    }
}

QVariant TitleAccessible::currentValue() const
{
    return isValid() ? header()->sectionSize(m_section) : 0;
}

void TitleAccessible::setCurrentValue(const QVariant &value)
{
    if (canResize())
        header()->resizeSection(
            m_section, qBound(minimumValue().toInt(), value.toInt(), maximumValue().toInt()));
}

QVariant TitleAccessible::maximumValue() const
{
    return isValid() ? header()->maximumSectionSize() : 0;
}

QVariant TitleAccessible::minimumValue() const
{
    return isValid() ? header()->minimumSectionSize() : 0;
}
