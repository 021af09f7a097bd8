// SPDX-License-Identifier: MIT

#include "window-hold_p.h"

#include "covered-accessible_p.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QPointer>
#include <QScopedValueRollback>
#include <QVector>
#include <QWidget>

#include <algorithm>

namespace {

struct Hold
{
    QPointer<QWidget> window;
    QPointer<QWidget> sheet;
};

// In the order in which the sheets came up: only the last one of a window holds it.
QVector<Hold> holds;

// The widget whose own interface is asked for at the moment.
const QObject *asked = nullptr;

const QWidget *holderOf(const QWidget *window)
{
    for (auto it = holds.crbegin(); it != holds.crend(); ++it) {
        if (it->window == window && it->sheet)
            return it->sheet;
    }
    return nullptr;
}

bool isCovered(const QWidget *widget);

// A menu may have no parent, but is an entry of the button, bar or menu that it opens from.
bool opensFromCovered(const QWidget *popup)
{
    if (popup->parentWidget() && isCovered(popup->parentWidget()))
        return true;
    const auto *menu = qobject_cast<const QMenu *>(popup);
    if (!menu)
        return false;
    const QList<QWidget *> openers = menu->menuAction()->associatedWidgets();
    return std::any_of(openers.begin(), openers.end(), isCovered);
}

bool isCovered(const QWidget *widget)
{
    const QWidget *window = widget->window();
    if (const QWidget *sheet = holderOf(window))
        return widget != sheet && !sheet->isAncestorOf(widget);
    return window->windowType() == Qt::Popup && opensFromCovered(window);
}

QAccessibleInterface *askOthers(QWidget *widget)
{
    const QScopedValueRollback<const QObject *> asking(asked, widget);
    return QAccessible::queryAccessibleInterface(widget);
}

bool canBeUsed(const QWidget *widget, QAccessibleInterface *interface)
{
    const bool hasValue =
        interface->valueInterface() && interface->role() != QAccessible::ProgressBar;
    QAccessibleActionInterface *actions = interface->actionInterface();
    const bool mayBeEnabled = !widget->isEnabled() && !widget->isWindow();
    return (actions && !actions->actionNames().isEmpty()) || hasValue || mayBeEnabled
        || interface->editableTextInterface() || hasParts(widget);
}

void drop(QAccessibleInterface *interface)
{
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
}

QAccessibleInterface *createCovered(const QString &className, QObject *object)
{
    if (!object->isWidgetType() || object == asked
        || className != QLatin1String(object->metaObject()->className()))
        return nullptr;
    auto *widget = static_cast<QWidget *>(object);
    if (!isCovered(widget))
        return nullptr;
    QAccessibleInterface *original = askOthers(widget);
    if (!original)
        return nullptr;
    QAccessibleInterface *covered =
        canBeUsed(widget, original) ? new CoveredAccessible(widget, original) : nullptr;
    drop(original);
    return covered;
}

// Qt asks the factory that was installed last before the others.
void askCoverFirst()
{
    QAccessible::removeFactory(createCovered);
    QAccessible::installFactory(createCovered);
}

// Deletes the interface of @p widget and has it made anew. Assistive technology, which remembers
// the children of a thing, is told that one goes and another one comes.
void renew(QWidget *widget, QAccessibleInterface *interface)
{
    const auto tell = [widget](QAccessible::Event type) {
        QAccessibleEvent event(widget, type);
        if (!widget->isWindow())
            QAccessible::updateAccessibility(&event);
    };
    tell(QAccessible::ObjectDestroyed);
    // The entries of a menu have interfaces of their own, which outlive that of the menu.
    for (QAction *action : widget->actions()) {
        if (QAccessibleInterface *entry = QAccessible::queryAccessibleInterface(action))
            drop(entry);
    }
    drop(interface);
    tell(QAccessible::ObjectCreated);
}

// Gives @p widget the interface that it has to have now.
void settle(QWidget *widget)
{
    QAccessibleInterface *interface = askOthers(widget);
    if (!interface)
        return;
    const bool reportsCovered = dynamic_cast<CoveredAccessible *>(interface);
    if (isCovered(widget) ? !reportsCovered && canBeUsed(widget, interface) : reportsCovered)
        renew(widget, interface);
}

void settleMenusOf(const QWidget *widget)
{
    for (const QAction *action : widget->actions()) {
        if (QMenu *menu = action->menu()) {
            settle(menu);
            settleMenusOf(menu);
        }
    }
}

void settleAll()
{
    askCoverFirst();
    for (const Hold &hold : QVector<Hold>(holds)) {
        if (!hold.window || !hold.sheet)
            continue;
        settle(hold.window);
        for (QWidget *widget : hold.window->findChildren<QWidget *>()) {
            settle(widget);
            settleMenusOf(widget);
        }
    }
    for (QWidget *widget : CoveredAccessible::widgets())
        settle(widget);
}

class Activity : public QAccessible::ActivationObserver
{
public:
    void accessibilityActiveChanged(bool active) override
    {
        m_wasActivated = active;
        if (active)
            settleAll();
    }

    [[nodiscard]] bool isActive() const { return m_wasActivated || QAccessible::isActive(); }

private:
    bool m_wasActivated = false;
};

Activity activity;

} // namespace

void holdForAssistive(QWidget *window, QWidget *sheet)
{
    holds.append(Hold{window, sheet});
    QAccessible::installActivationObserver(&activity);
    if (activity.isActive())
        settleAll();
}

void releaseForAssistive(const QWidget *sheet)
{
    const auto isOver = [sheet](const Hold &hold) {
        return !hold.window || !hold.sheet || hold.sheet == sheet;
    };
    holds.erase(std::remove_if(holds.begin(), holds.end(), isOver), holds.end());
    if (activity.isActive() || !CoveredAccessible::widgets().isEmpty())
        QMetaObject::invokeMethod(qApp, settleAll, Qt::QueuedConnection);
}

bool holdsForAssistive(const QWidget *sheet)
{
    return holderOf(sheet->window()) == sheet;
}

bool isCoveredForAssistive(const QWidget *widget)
{
    return isCovered(widget);
}

void noticeShownForAssistive(QObject *widget)
{
    if (!activity.isActive() || !widget->isWidgetType())
        return;
    askCoverFirst();
    settle(static_cast<QWidget *>(widget));
}
