// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleObject>

// The application as assistive technology meets it, with the menus that are open among its windows.
//
// Qt leaves out all popups, though a menu says that the application is what it lies in. So nobody
// who looks through the windows would come upon it. The popup of a combo box needs no place here:
// the box has it among its own parts.
//
// The library installs it by itself, as soon as there is an application object.
class OpenMenusAccessible : public QAccessibleApplication
{
public:
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *child(int index) const override;
};
