// SPDX-License-Identifier: MIT

#pragma once

#include "item-view_p.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QPointer>

class HeaderControl;

// The title of a column or a row. The view's interface owns it.
//
// A column of a header with a HeaderControl can be pressed, which sorts by it, and has its width in
// device pixels as value.
class TitleAccessible : public QAccessibleInterface,
                        public QAccessibleActionInterface,
                        public QAccessibleValueInterface
{
public:
    TitleAccessible(const ItemView *owner, Qt::Orientation orientation, int section);

    [[nodiscard]] Qt::Orientation orientation() const { return m_orientation; }
    [[nodiscard]] int section() const { return m_section; }

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override { }
    QRect rect() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant &value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override { return 1; }

private:
    [[nodiscard]] QHeaderView *header() const;
    [[nodiscard]] HeaderControl *control() const;
    [[nodiscard]] bool canResize() const;

    const ItemView *const m_owner;
    const QPointer<QAbstractItemView> m_view;
    const Qt::Orientation m_orientation;
    const int m_section;
};

// Says what the title tells of the order in which its column is sorted; empty if it is not.
[[nodiscard]] QString sortedDescription(const QHeaderView *header, int section);
