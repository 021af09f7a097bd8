// SPDX-License-Identifier: MIT

#include "button-accessible_p.h"

#include "named-action_p.h"
#include "window-hold_p.h"

#include "kovakit-qt/utils/markup_p.h"

#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace {

bool opensMenuAtOnce(const QAbstractButton *button)
{
    const auto *toolButton = qobject_cast<const QToolButton *>(button);
    return !toolButton || toolButton->popupMode() == QToolButton::InstantPopup;
}

void showMenu(QAbstractButton *button)
{
    if (auto *toolButton = qobject_cast<QToolButton *>(button))
        toolButton->showMenu();
    else if (auto *pushButton = qobject_cast<QPushButton *>(button))
        pushButton->showMenu();
}

} // namespace

ButtonAccessible::ButtonAccessible(QAbstractButton *button)
    : NamedAccessible(button, QAccessible::Button)
{
}

QAbstractButton *ButtonAccessible::button() const
{
    return static_cast<QAbstractButton *>(widget());
}

QMenu *ButtonAccessible::menu() const
{
    if (const auto *toolButton = qobject_cast<QToolButton *>(button()))
        return toolButton->menu();
    const auto *pushButton = qobject_cast<QPushButton *>(button());
    return pushButton ? pushButton->menu() : nullptr;
}

QAccessible::Role ButtonAccessible::role() const
{
    return menu() ? QAccessible::ButtonMenu : QAccessible::Button;
}

QAccessible::State ButtonAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.pressed = button()->isDown();
    state.checkable = button()->isCheckable();
    state.checked = button()->isChecked();
    if (const auto *pushButton = qobject_cast<QPushButton *>(button()))
        state.defaultButton = pushButton->isDefault();
    if (const QMenu *opened = menu()) {
        state.hasPopup = true;
        state.expandable = true;
        state.expanded = opened->isVisible();
        state.collapsed = !opened->isVisible();
    }
    return state;
}

QString ButtonAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Accelerator)
        return button()->shortcut().toString(QKeySequence::NativeText);
    return NamedAccessible::text(kind);
}

QString ButtonAccessible::shownName() const
{
    if (!button()->text().isEmpty())
        return withoutMnemonics(button()->text());
    return withoutMarkup(button()->toolTip());
}

QStringList ButtonAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (!button()->isEnabled())
        return names;
    if (menu())
        names.prepend(showMenuAction());
    names.prepend(pressAction());
    return names;
}

void ButtonAccessible::doAction(const QString &name)
{
    QAbstractButton *pressed = button();
    const bool presses = name == pressAction();
    if (!actionNames().contains(name) || (!presses && name != showMenuAction())) {
        QAccessibleWidget::doAction(name);
        return;
    }
    const bool opens = menu() && (!presses || opensMenuAtOnce(pressed));
    if (opens)
        speakForEntries(menu());
    const auto act = [pressed, opens] {
        // The press before this one may have opened a sheet.
        if (isCoveredForAssistive(pressed))
            return;
        if (opens)
            showMenu(pressed);
        else
            pressed->click();
    };
    QMetaObject::invokeMethod(pressed, act, Qt::QueuedConnection);
}

QStringList ButtonAccessible::keyBindingsForAction(const QString &name) const
{
    const QKeySequence shortcut = button()->shortcut();
    return name == pressAction() && !shortcut.isEmpty()
             ? QStringList(shortcut.toString(QKeySequence::NativeText))
             : QStringList();
}
