// SPDX-License-Identifier: MIT

#include "named-action_p.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleInterface>
#include <QAccessibleObject>
#include <QAction>
#include <QMenu>
#include <QPointer>

namespace {

constexpr char fullNameProperty[] = "kovaFullName";

// Qt makes the interface of a menu's entry anew for every action, and offers none to derive from.
class NamedActionAccessible : public QAccessibleObject, public QAccessibleActionInterface
{
public:
    NamedActionAccessible(QAction *action, QMenu *menu)
        : QAccessibleObject(action)
        , m_menu(menu)
    {
    }

    bool isValid() const override { return m_menu && QAccessibleObject::isValid(); }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_menu);
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QWindow *window() const override { return parent()->window(); }
    QAccessible::Role role() const override { return QAccessible::MenuItem; }

    QRect rect() const override
    {
        const QRect entry = m_menu->actionGeometry(action());
        return QRect(m_menu->mapToGlobal(entry.topLeft()), entry.size());
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? action()->property(fullNameProperty).toString()
                                         : QString();
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = !m_menu->isVisible() || !action()->isVisible();
        state.disabled = !action()->isEnabled();
        state.focused = m_menu->activeAction() == action();
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface
                 ? static_cast<QAccessibleActionInterface *>(this)
                 : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &name) override
    {
        if (name == pressAction())
            action()->trigger();
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QAction *action() const { return static_cast<QAction *>(object()); }

    QPointer<QMenu> m_menu;
};

QAccessibleInterface *createInterface(const QString &className, QObject *object)
{
    if (className != QLatin1String(QAction::staticMetaObject.className())
        || !object->property(fullNameProperty).isValid())
        return nullptr;
    auto *menu = qobject_cast<QMenu *>(object->parent());
    return menu ? new NamedActionAccessible(static_cast<QAction *>(object), menu) : nullptr;
}

} // namespace

void setFullName(QAction *action, const QString &name)
{
    QAccessible::installFactory(createInterface);
    action->setProperty(fullNameProperty, name);
    action->setToolTip(name);
}
