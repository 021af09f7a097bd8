#include "user-input.h"

#include <QtTest>

void showActive(QWidget *window)
{
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
}

void press(const QWidget *widget, int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(widget->window()->windowHandle(), Qt::Key(key), modifiers);
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

QString spoken(QWidget *widget, QAccessible::Text kind)
{
    const QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
    return accessible ? accessible->text(kind) : QString();
}
