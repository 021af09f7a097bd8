// SPDX-License-Identifier: MIT

#pragma once

#include "shown-text_p.h"

class QComboBox;

// A combo box without a field to type in: named after its caption, not after its entry, which is
// heard as its text. The popup is a part of the box.
class ChoiceAccessible : public ShownTextAccessible
{
public:
    explicit ChoiceAccessible(QComboBox *box);

    QAccessible::State state() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;

protected:
    QString shownText() const override;

private:
    [[nodiscard]] QComboBox *box() const;
};
