// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QPoint>

#include <initializer_list>

class QWidget;

// Keys and clicks as a user makes them: they go to the window, which finds out whose they are.

// Shows @p window and waits until the keyboard is its own, or else stops the program.
void showActive(QWidget *window);

// Presses and releases @p key in the window of @p widget.
void press(const QWidget *widget, int key, Qt::KeyboardModifiers modifiers = {});

// Presses and releases @p keys, one after the other; their modifiers are added to them.
void press(const QWidget *widget, std::initializer_list<int> keys);

// Clicks with the left button at @p position of @p widget, or in its middle.
void click(const QWidget *widget, const QPoint &position);
void click(const QWidget *widget);

// Clicks twice at @p position of @p widget before the program is back to see either click, as with
// somebody in a hurry while it is busy.
void doubleClickWhileBusy(const QWidget *widget, const QPoint &position);

// Turns the wheel over the middle of @p widget by @p notches, towards the user if negative.
void turnWheel(const QWidget *widget, int notches);

// What a screen reader says of @p widget.
QString spoken(QWidget *widget, QAccessible::Text kind = QAccessible::Name);
