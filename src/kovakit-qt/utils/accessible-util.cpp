// SPDX-License-Identifier: MIT

#include "accessible-util.h"

#include <QWidget>

namespace {

template<typename Accepts>
void appendAccessible(QWidget *widget, const Accepts &accepts, QList<QWidget *> &found)
{
    if (!widget || !widget->isVisible())
        return;
    if (accepts(widget))
        found.append(widget);
    for (QObject *child : widget->children()) {
        if (child->isWidgetType())
            appendAccessible(static_cast<QWidget *>(child), accepts, found);
    }
}

} // namespace

AccessibleFilter::AccessibleFilter(const QList<QWidget *> &filterWidgets,
                                   Qt::FocusPolicy focusLevel)
    : m_filterWidgets(filterWidgets)
    , m_focusLevel(focusLevel)
{
}

void AccessibleFilter::setFilterWidgets(const QList<QWidget *> &filterWidgets)
{
    m_filterWidgets = filterWidgets;
}

void AccessibleFilter::setFocusLevel(Qt::FocusPolicy focusLevel)
{
    m_focusLevel = focusLevel;
}

QList<QWidget *> accessibleList(QWidget *widget, QList<QWidget *> excluded)
{
    QList<QWidget *> found;
    appendAccessible(
        widget,
        [&excluded](QWidget *candidate) {
            return candidate->focusPolicy() != Qt::NoFocus && !excluded.contains(candidate);
        },
        found);
    return found;
}

QList<QWidget *> accessibleList(QWidget *widget, AccessibleFilter filter)
{
    QList<QWidget *> found;
    appendAccessible(
        widget,
        [&filter](QWidget *candidate) {
            return int(candidate->focusPolicy()) >= int(filter.focusLevel())
                && !filter.filterWidgets().contains(candidate);
        },
        found);
    return found;
}
