// SPDX-License-Identifier: MIT

#include "named-action_p.h"

#include "window-hold_p.h"

#include "kovakit-qt/utils/markup_p.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleInterface>
#include <QAccessibleObject>
#include <QAction>
#include <QMenu>
#include <QPointer>

namespace {

constexpr char fullNameProperty[] = "kovaFullName";
constexpr char speaksProperty[] = "kovaSpeaksForEntries";

// Qt makes the interface of a menu's entry anew for every action, and offers none to derive from.
// Its own triggers an entry and leaves the menu open.
class ActionAccessible : public QAccessibleObject, public QAccessibleActionInterface
{
public:
    ActionAccessible(QAction *action, QMenu *menu)
        : QAccessibleObject(action)
        , m_menu(menu)
    {
    }

    bool isValid() const override { return m_menu && QAccessibleObject::isValid(); }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_menu);
    }
    QAccessibleInterface *child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(action()->menu()) : nullptr;
    }
    int childCount() const override { return action()->menu() ? 1 : 0; }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child && child->object() == action()->menu() ? 0 : -1;
    }
    QWindow *window() const override { return parent()->window(); }
    QAccessible::Role role() const override
    {
        return action()->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
    }

    QRect rect() const override
    {
        const QRect entry = m_menu->actionGeometry(action());
        return QRect(m_menu->mapToGlobal(entry.topLeft()), entry.size());
    }

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Accelerator)
            return action()->shortcut().toString(QKeySequence::NativeText);
        if (kind != QAccessible::Name)
            return QString();
        const QVariant fullName = action()->property(fullNameProperty);
        return fullName.isValid() ? fullName.toString() : withoutMnemonics(action()->text());
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = !m_menu->isVisible() || !action()->isVisible();
        state.disabled = !action()->isEnabled();
        state.focusable = !action()->isSeparator();
        state.focused = m_menu->activeAction() == action();
        state.checkable = action()->isCheckable();
        state.checked = action()->isChecked();
        state.hasPopup = action()->menu() != nullptr;
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface
                 ? static_cast<QAccessibleActionInterface *>(this)
                 : nullptr;
    }
    QStringList actionNames() const override
    {
        if (action()->isSeparator() || !action()->isEnabled())
            return {};
        return {action()->menu() ? showMenuAction() : pressAction()};
    }
    void doAction(const QString &name) override
    {
        if (!actionNames().contains(name))
            return;
        if (name == showMenuAction()) {
            m_menu->setActiveAction(action());
            return;
        }
        // As a click does it, and from the event loop, which the action may run anew.
        closeAll(m_menu);
        const auto trigger = [pressed = action(), menu = m_menu] {
            // The press before this one may have opened a sheet.
            if (!menu || !isCoveredForAssistive(menu))
                pressed->trigger();
        };
        QMetaObject::invokeMethod(action(), trigger, Qt::QueuedConnection);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    static void closeAll(QMenu *menu)
    {
        for (QPointer<QMenu> each = menu; each;) {
            const QAction *own = each->menuAction();
            each->close();
            QMenu *above = nullptr;
            for (QWidget *widget : own->associatedWidgets())
                above = above ? above : qobject_cast<QMenu *>(widget);
            each = above && above->isVisible() ? above : nullptr;
        }
    }

    QAction *action() const { return static_cast<QAction *>(object()); }

    QPointer<QMenu> m_menu;
};

// The menu that shows an entry of its own name, or one that speaks for its entries.
QMenu *speakingMenu(const QAction *action)
{
    auto *owner = qobject_cast<QMenu *>(action->parent());
    if (owner && action->property(fullNameProperty).isValid())
        return owner;
    QMenu *found = nullptr;
    for (QWidget *widget : action->associatedWidgets()) {
        auto *menu = qobject_cast<QMenu *>(widget);
        if (menu && menu->property(speaksProperty).toBool() && (!found || menu->isVisible()))
            found = menu;
    }
    return found;
}

QAccessibleInterface *createInterface(const QString &className, QObject *object)
{
    if (className != QLatin1String(QAction::staticMetaObject.className()))
        return nullptr;
    auto *action = static_cast<QAction *>(object);
    QMenu *menu = speakingMenu(action);
    return menu ? new ActionAccessible(action, menu) : nullptr;
}

} // namespace

void setFullName(QAction *action, const QString &name)
{
    QAccessible::installFactory(createInterface);
    action->setProperty(fullNameProperty, name);
    action->setToolTip(name);
}

void speakForEntries(QMenu *menu)
{
    QAccessible::installFactory(createInterface);
    menu->setProperty(speaksProperty, true);
}
