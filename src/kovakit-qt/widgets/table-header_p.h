// SPDX-License-Identifier: MIT

#pragma once

#include "kovakit-qt/accessibility/header-control_p.h"

#include <QColor>
#include <QHeaderView>

// The header of a KovaTableWidget: placed over the rows to the pixel, and for the keyboard as well.
//
// With the focus, it has a cursor: Left, Right, Home and End choose a section, Space and Return
// click it, Alt or Shift with Left and Right move its edge.
class TableHeader : public QHeaderView, public HeaderControl
{
    Q_OBJECT
    Q_PROPERTY(QColor focusColor MEMBER m_focusColor)

public:
    // A header whose first @p columnCount sections have a title.
    explicit TableHeader(int columnCount);

    int cursorSection() const override;
    void focusSection(int section) override;
    bool canPressSection(int section) const override;
    void pressSection(int section) override;
    bool canResizeSection(int section) const override;
    void widenSection(int section, int steps) override;

    // Where a section is seen in the header.
    [[nodiscard]] QRect sectionRect(int section) const;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

Q_SIGNALS:
    // The cursor is on another section, or the focus came to the one that has it.
    void cursorMoved(int section);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    [[nodiscard]] bool isTitle(int section) const;
    [[nodiscard]] int titleFrom(int visualIndex, int direction) const;
    void setCursor(int section);
    void pressAtCursor();
    bool moveCursor(const QKeyEvent *event);
    void drawFocusRing(QPainter *painter, const QRect &section) const;

    const int m_columnCount;
    int m_cursor = 0;
    int m_pressX = 0;
    QColor m_focusColor;
};
