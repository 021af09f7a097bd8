// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>

// A widget whose name is that of a field, and which shows in plain text what is chosen there. The
// text can be read and not changed: it has neither a cursor nor a selection.
class ShownTextAccessible : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    QString text(QAccessible::Text kind) const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QString attributes(int offset, int *startOffset, int *endOffset) const override;
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override { }
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    int selectionCount() const override { return 0; }
    void selection(int selectionIndex, int *startOffset, int *endOffset) const override;
    void addSelection(int, int) override { }
    void setSelection(int, int, int) override { }
    void removeSelection(int) override { }

protected:
    [[nodiscard]] virtual QString shownText() const = 0;
};
