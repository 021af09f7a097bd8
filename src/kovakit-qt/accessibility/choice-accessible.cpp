// SPDX-License-Identifier: MIT

#include "choice-accessible_p.h"

#include <QAbstractItemView>
#include <QComboBox>

ChoiceAccessible::ChoiceAccessible(QComboBox *box)
    : ShownTextAccessible(box, QAccessible::ComboBox)
{
}

QComboBox *ChoiceAccessible::box() const
{
    return static_cast<QComboBox *>(widget());
}

QString ChoiceAccessible::shownText() const
{
    return box()->currentText();
}

QAccessible::State ChoiceAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    const bool isOpen = box()->view()->isVisible();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = isOpen;
    state.collapsed = !isOpen;
    return state;
}

int ChoiceAccessible::childCount() const
{
    return 1;
}

QAccessibleInterface *ChoiceAccessible::child(int index) const
{
    return index == 0 ? QAccessible::queryAccessibleInterface(box()->view()) : nullptr;
}

int ChoiceAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    return child && child->object() == box()->view() ? 0 : -1;
}

QStringList ChoiceAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (box()->isEnabled())
        names = QStringList{showMenuAction(), pressAction()} + names;
    return names;
}

void ChoiceAccessible::doAction(const QString &name)
{
    if (name != showMenuAction() && name != pressAction()) {
        QAccessibleWidget::doAction(name);
    } else if (box()->isEnabled()) {
        if (box()->view()->isVisible())
            box()->hidePopup();
        else
            box()->showPopup();
    }
}
