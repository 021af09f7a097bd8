// SPDX-License-Identifier: MIT

#pragma once

#include "named-accessible_p.h"

#include <QAccessibleWidget>
#include <QPushButton>

// The tool bar that a path bar is to assistive technology.
[[nodiscard]] QAccessibleInterface *makePathAccessible(QWidget *path);

// The separator that an arrow of a path bar is to assistive technology.
[[nodiscard]] QAccessibleInterface *makeArrowAccessible(QPushButton *arrow);

template<class Path>
[[nodiscard]] bool isArrowOfPath(const QPushButton *button)
{
    const QWidget *viewport = button->parentWidget();
    return viewport && button->focusPolicy() == Qt::NoFocus
        && qobject_cast<Path *>(viewport->parentWidget());
}

// A factory for QAccessible::installFactory().
template<class Path>
QAccessibleInterface *createPathAccessible(const QString &className, QObject *object)
{
    if (className == QLatin1String(Path::staticMetaObject.className())) {
        auto *path = qobject_cast<Path *>(object);
        return path ? makePathAccessible(path) : nullptr;
    }
    if (className == QLatin1String(QPushButton::staticMetaObject.className())) {
        auto *button = qobject_cast<QPushButton *>(object);
        return button && isArrowOfPath<Path>(button) ? makeArrowAccessible(button) : nullptr;
    }
    return nullptr;
}

// Makes @p path, a table of one row, report itself to assistive technology as a tool bar of its
// buttons, for its cells say nothing, and its arrows as separators. For its constructor.
template<class Path>
void installPathAccessibility(Path *path)
{
    QAccessible::installFactory(createPathAccessible<Path>);
    renewAccessible(path);
}
