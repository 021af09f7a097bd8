// SPDX-License-Identifier: MIT

#include "user-input.h"

#include <QtTest>

void showActive(QWidget *window)
{
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        qFatal("a window does not become active");
}

void press(const QWidget *widget, int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(widget->window()->windowHandle(), Qt::Key(key), modifiers);
}

void press(const QWidget *widget, std::initializer_list<int> keys)
{
    for (const int key : keys)
        press(widget, key & ~Qt::KeyboardModifierMask,
              Qt::KeyboardModifiers(key & Qt::KeyboardModifierMask));
}

void click(const QWidget *widget, const QPoint &position)
{
    const QWidget *window = widget->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, widget->mapTo(window, position));
}

void click(const QWidget *widget)
{
    click(widget, widget->rect().center());
}

void doubleClickWhileBusy(const QWidget *widget, const QPoint &position)
{
    QWindow *window = widget->window()->windowHandle();
    const QPoint local = widget->mapTo(widget->window(), position);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                            QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const bool down = type == QEvent::MouseButtonPress;
        qt_handleMouseEvent(window, local, window->mapToGlobal(local),
                            down ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton, type,
                            Qt::NoModifier, int(++QTest::lastMouseTimestamp));
    }
}

void turnWheel(const QWidget *widget, int notches)
{
    const QWidget *window = widget->window();
    const QPoint position = widget->mapTo(window, widget->rect().center());
    QWheelEvent event(position, window->mapToGlobal(position), QPoint(), QPoint(0, 120 * notches),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window->windowHandle(), &event);
}

QString spoken(QWidget *widget, QAccessible::Text kind)
{
    const QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
    return accessible ? accessible->text(kind) : QString();
}
