// SPDX-License-Identifier: MIT

#pragma once

#include "named-accessible_p.h"

class QAbstractButton;
class QMenu;

// Reports a push button or a tool button to assistive technology. With Qt's own interface a tool
// button cannot be pressed, a menu that opens at the first press does not open, a picture without
// text has no name, and a tool tip with markup is read out with its tags.
class ButtonAccessible : public NamedAccessible
{
public:
    explicit ButtonAccessible(QAbstractButton *button);

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    // Presses and menus come from the event loop: what they begin may run one of its own, and
    // whoever asked waits for the answer.
    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

protected:
    QString shownName() const override;

private:
    [[nodiscard]] QAbstractButton *button() const;
    [[nodiscard]] QMenu *menu() const;
};

// Makes every Button report itself in this way. For its constructor.
template<class Button>
void installButtonAccessibility()
{
    QAccessible::installFactory(createAccessible<Button, ButtonAccessible>);
}
