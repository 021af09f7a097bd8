// SPDX-License-Identifier: MIT

#pragma once

#include "named-accessible_p.h"
#include "window-hold_p.h"

#include <QAction>
#include <QWidget>

// Reports a window to assistive technology as a dialog that offers the window's QActions, which
// otherwise only keys reach. They are triggered from the event loop, since one may run it anew.
class WindowAccessible : public QAccessibleWidget
{
public:
    explicit WindowAccessible(QWidget *window)
        : QAccessibleWidget(window, QAccessible::Dialog)
    {
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        for (const QAction *action : widget()->actions()) {
            if (action->isEnabled())
                names.append(action->text());
        }
        return names;
    }

    void doAction(const QString &name) override
    {
        for (QAction *action : widget()->actions()) {
            if (!action->isEnabled() || action->text() != name)
                continue;
            const auto trigger = [action, window = widget()] {
                // What was asked for before this may have opened a sheet.
                if (!isCoveredForAssistive(window))
                    action->trigger();
            };
            QMetaObject::invokeMethod(action, trigger, Qt::QueuedConnection);
        }
        QAccessibleWidget::doAction(name);
    }
};

// Makes every Window report itself in this way. For its constructor.
template<class Window>
void installWindowAccessibility()
{
    QAccessible::installFactory(createAccessible<Window, WindowAccessible>);
}
