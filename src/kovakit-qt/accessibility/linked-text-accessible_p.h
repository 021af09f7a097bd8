// SPDX-License-Identifier: MIT

#pragma once

#include "named-accessible_p.h"

#include <QVector>

class QLabel;

// Reports a label to assistive technology as the words of its text. Each link in it is a child that
// can be pressed, which Qt's own interface keeps to itself.
class LinkedTextAccessible : public NamedAccessible
{
public:
    explicit LinkedTextAccessible(QLabel *label);
    ~LinkedTextAccessible() override;

    QAccessible::State state() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

protected:
    QString shownName() const override;

private:
    class Link;

    [[nodiscard]] QLabel *label() const;
    [[nodiscard]] bool isMarkup() const;
    void findLinks() const;
    void dropLinks() const;

    mutable QString m_text;
    mutable QVector<QAccessible::Id> m_links;
};

// Makes every Label report itself in this way. For its constructor.
template<class Label>
void installLinkedTextAccessibility()
{
    QAccessible::installFactory(createAccessible<Label, LinkedTextAccessible>);
}
