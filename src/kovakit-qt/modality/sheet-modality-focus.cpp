// SPDX-License-Identifier: MIT

#include "sheet-modality_p.h"

#include <kovakit-qt/utils/accessible-util.h>

#include <QPointer>

#include <algorithm>

namespace {

bool canTakeFocus(const QWidget *widget, const QWidget *window)
{
    return widget && widget->window() == window && widget->isEnabled()
        && widget->isVisibleTo(window);
}

bool isTabStop(const QWidget *widget)
{
    return widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy();
}

} // namespace

QList<QWidget *> SheetModality::focusWidgets() const
{
    QList<QWidget *> widgets = accessibleList(m_sheet, AccessibleFilter({m_sheet}, Qt::TabFocus));
    const auto skipped = [](const QWidget *widget) {
        return !isTabStop(widget) || !widget->isEnabled();
    };
    widgets.erase(std::remove_if(widgets.begin(), widgets.end(), skipped), widgets.end());
    return widgets;
}

bool SheetModality::moveFocus(bool forward)
{
    const QList<QWidget *> widgets = focusWidgets();
    if (widgets.isEmpty())
        return true;
    const int count = widgets.size();
    const int current = widgets.indexOf(m_sheet->window()->focusWidget());
    int next = forward ? 0 : count - 1;
    if (current >= 0)
        next = (current + (forward ? 1 : count - 1)) % count;
    widgets.at(next)->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void SheetModality::holdFocus(QWidget *now)
{
    if (isInside(now)) {
        m_focusInside = now;
        return;
    }
    if (!now || now->window() != m_window || !isTopmost() || !m_sheet->isVisible())
        return;
    const QList<QWidget *> widgets = focusWidgets();
    QWidget *target = m_sheet;
    if (canTakeFocus(m_focusInside, m_window))
        target = m_focusInside;
    else if (!widgets.isEmpty())
        target = widgets.first();
    target->setFocus(Qt::OtherFocusReason);
}

void SheetModality::pullFocus()
{
    if (m_window && !isInside(m_window->focusWidget()))
        holdFocus(m_window);
}

// The widget that had the focus before the sheet; if that cannot take it any more, the next one in
// the focus chain, to which Qt would have moved the focus without the sheet.
QWidget *SheetModality::heirOfFocus() const
{
    QWidget *const before = m_focusBefore;
    if (!before || before->window() != m_window)
        return nullptr;
    if (canTakeFocus(before, m_window))
        return before;
    for (QWidget *next = before->nextInFocusChain(); next != before;
         next = next->nextInFocusChain()) {
        if (isTabStop(next) && canTakeFocus(next, m_window) && !isInside(next))
            return next;
    }
    return nullptr;
}

void SheetModality::returnFocus()
{
    const QPointer<SheetModality> self(this);
    const QPointer<SheetModality> below(topmostOf(m_window));
    if (QWidget *heir = heirOfFocus())
        heir->setFocus(Qt::OtherFocusReason);
    // Qt would go on sending keys to a hidden widget that has the focus.
    if (self && m_window && isInside(m_window->focusWidget()))
        m_window->focusWidget()->clearFocus();
    if (below)
        below->pullFocus();
}
