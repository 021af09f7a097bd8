// SPDX-License-Identifier: MIT

#include "table-header_p.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace {

constexpr int designStep = 8;

} // namespace

TableHeader::TableHeader(int columnCount)
    : QHeaderView(Qt::Horizontal)
    , m_columnCount(columnCount)
{
}

bool TableHeader::isTitle(int section) const
{
    return section >= 0 && section < m_columnCount && !isSectionHidden(section);
}

// The nearest section with a title from one place on, or -1.
int TableHeader::titleFrom(int visualIndex, int direction) const
{
    while (visualIndex >= 0 && visualIndex < count() && !isTitle(logicalIndex(visualIndex)))
        visualIndex += direction;
    return logicalIndex(visualIndex);
}

int TableHeader::cursorSection() const
{
    if (isTitle(m_cursor))
        return m_cursor;
    // The column was hidden.
    const int before = titleFrom(visualIndex(m_cursor), -1);
    return before >= 0 ? before : titleFrom(0, 1);
}

void TableHeader::setCursor(int section)
{
    if (!isTitle(section))
        return;
    m_cursor = section;
    viewport()->update();
    Q_EMIT cursorMoved(section);
}

void TableHeader::focusSection(int section)
{
    if (isTitle(section))
        m_cursor = section;
    if (hasFocus())
        setCursor(section);
    else
        setFocus(Qt::OtherFocusReason);
}

bool TableHeader::canPressSection(int section) const
{
    return sectionsClickable() && isTitle(section);
}

void TableHeader::pressSection(int section)
{
    if (!canPressSection(section))
        return;
    const bool isAscending =
        sortIndicatorSection() != section || sortIndicatorOrder() == Qt::DescendingOrder;
    setSortIndicator(section, isAscending ? Qt::AscendingOrder : Qt::DescendingOrder);
    Q_EMIT sectionClicked(section);
}

bool TableHeader::canResizeSection(int section) const
{
    return isTitle(section) && sectionResizeMode(section) == Interactive;
}

void TableHeader::widenSection(int section, int steps)
{
    if (canResizeSection(section))
        resizeSection(section, qBound(minimumSectionSize(),
                                      sectionSize(section) + steps * qMax(1, kovaPx(designStep)),
                                      maximumSectionSize()));
}

QRect TableHeader::sectionRect(int section) const
{
    return {sectionViewportPosition(section), 0, sectionSize(section), height()};
}

QVariant TableHeader::inputMethodQuery(Qt::InputMethodQuery query) const
{
    // An area that brings the focus into sight is to show the section, not the middle of a header
    // that is wider than any screen.
    if (query == Qt::ImCursorRectangle)
        return sectionRect(cursorSection());
    return QHeaderView::inputMethodQuery(query);
}

bool TableHeader::event(QEvent *event)
{
    if (event->type() == QEvent::Show) {
        bool isOfUse = sectionsClickable();
        for (int section = 0; section < m_columnCount && !isOfUse; ++section)
            isOfUse = sectionResizeMode(section) == Interactive;
        setFocusPolicy(isOfUse ? Qt::TabFocus : Qt::NoFocus);
    }
    return QHeaderView::event(event);
}

void TableHeader::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Select:
        pressAtCursor();
        return;
    default:
        if (!moveCursor(event))
            event->ignore();
    }
}

void TableHeader::pressAtCursor()
{
    const QPointer<TableHeader> guard(this);
    pressSection(cursorSection());
    // Who sorts may have scrolled the rows, and the header with them.
    if (guard)
        setCursor(cursorSection());
}

bool TableHeader::moveCursor(const QKeyEvent *event)
{
    const bool isForward = (event->key() == Qt::Key_Right) != isRightToLeft();
    const int cursor = cursorSection();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (event->modifiers() & (Qt::AltModifier | Qt::ShiftModifier))
            widenSection(cursor, isForward ? 1 : -1);
        else
            setCursor(titleFrom(visualIndex(cursor) + (isForward ? 1 : -1), isForward ? 1 : -1));
        return true;
    case Qt::Key_Home:
        setCursor(titleFrom(0, 1));
        return true;
    case Qt::Key_End:
        setCursor(titleFrom(count() - 1, -1));
        return true;
    default:
        return false;
    }
}

void TableHeader::focusInEvent(QFocusEvent *)
{
    setCursor(cursorSection());
}

void TableHeader::focusOutEvent(QFocusEvent *)
{
    viewport()->update();
}

void TableHeader::mousePressEvent(QMouseEvent *event)
{
    m_pressX = x();
    QHeaderView::mousePressEvent(event);
}

// The header moves with the rows, which slide along when a column at their end gets narrower.
// Counted in the header, the edge that is dragged would run away from the pointer.
void TableHeader::mouseMoveEvent(QMouseEvent *event)
{
    const int moved = event->buttons() ? x() - m_pressX : 0;
    QMouseEvent unmoved(event->type(), event->localPos() + QPointF(moved, 0), event->windowPos(),
                        event->screenPos(), event->button(), event->buttons(), event->modifiers());
    QHeaderView::mouseMoveEvent(&unmoved);
}

// From right to left a header paints its sections one pixel further right than it says they are,
// where the lines of a table's grid would be.
void TableHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    const QRect place = isRightToLeft() ? rect.translated(-1, 0) : rect;
    painter->save();
    // A style sheet leaves a clipping behind in which nothing can be seen.
    QHeaderView::paintSection(painter, place, logicalIndex);
    painter->restore();
    if (hasFocus() && logicalIndex == cursorSection())
        drawFocusRing(painter, place);
}

void TableHeader::drawFocusRing(QPainter *painter, const QRect &section) const
{
    const double width = qMax(1, kovaPx(2));
    const double inset = 1 + width / 2;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(
        QPen(m_focusColor.isValid() ? m_focusColor : palette().highlight().color(), width));
    painter->drawRoundedRect(QRectF(section).adjusted(inset, inset, -inset, -inset), kovaPx(2),
                             kovaPx(2));
    painter->restore();
}
