// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>
#include <QWidget>

// Reports a widget under a sheet to assistive technology: its role, name and state are there, and
// what it holds can be read, but it is disabled and offers nothing that could be done with it.
//
// Text and value are told because Qt warns, whenever the host changes them, of a widget without.
class CoveredAccessible : public QAccessibleWidget,
                          public QAccessibleTextInterface,
                          public QAccessibleValueInterface
{
public:
    // Takes role, name, description and state from @p original, the interface of @p widget.
    CoveredAccessible(QWidget *widget, QAccessibleInterface *original);
    ~CoveredAccessible() override;

    // The widgets that are reported in this way now.
    [[nodiscard]] static QWidgetList widgets();

    void *interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;

    QString text(int start, int end) const override;
    int characterCount() const override;
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    int selectionCount() const override { return 0; }
    void selection(int, int *start, int *end) const override;
    void addSelection(int, int) override { }
    void removeSelection(int) override { }
    void setSelection(int, int, int) override { }
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override { }
    QString attributes(int offset, int *start, int *end) const override;

    QVariant currentValue() const override { return property("value"); }
    QVariant minimumValue() const override { return property("minimum"); }
    QVariant maximumValue() const override { return property("maximum"); }
    QVariant minimumStepSize() const override { return property("singleStep"); }
    void setCurrentValue(const QVariant &) override { }

private:
    [[nodiscard]] QVariant property(const char *name) const { return widget()->property(name); }
    [[nodiscard]] QString content() const;

    const QString m_name;
    const QString m_description;
    const QAccessible::State m_state;
    const bool m_hasText;
    const bool m_hasValue;
    const bool m_hasParts;
};

// Whether @p widget shows parts of its own that are no widgets: cells, tabs, entries.
[[nodiscard]] bool hasParts(const QWidget *widget);
