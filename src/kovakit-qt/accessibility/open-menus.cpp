// SPDX-License-Identifier: MIT

#include "open-menus_p.h"

#include <QApplication>
#include <QMenu>

namespace {

QVector<QMenu *> openMenus()
{
    QVector<QMenu *> menus;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *menu = qobject_cast<QMenu *>(window);
        if (menu && menu->isVisible() && menu->windowType() == Qt::Popup)
            menus.append(menu);
    }
    return menus;
}

QAccessibleInterface *createApplication(const QString &, QObject *object)
{
    return object == qApp ? new OpenMenusAccessible : nullptr;
}

void installApplication()
{
    QAccessible::installFactory(createApplication);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(installApplication)

int OpenMenusAccessible::childCount() const
{
    return QAccessibleApplication::childCount() + openMenus().size();
}

int OpenMenusAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    auto *menu = child ? qobject_cast<QMenu *>(child->object()) : nullptr;
    const int place = menu ? openMenus().indexOf(menu) : -1;
    return place < 0 ? QAccessibleApplication::indexOfChild(child)
                     : QAccessibleApplication::childCount() + place;
}

QAccessibleInterface *OpenMenusAccessible::child(int index) const
{
    const int windows = QAccessibleApplication::childCount();
    return index < windows
             ? QAccessibleApplication::child(index)
             : QAccessible::queryAccessibleInterface(openMenus().value(index - windows));
}
