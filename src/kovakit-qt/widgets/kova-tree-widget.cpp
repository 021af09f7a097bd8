#include "kova-tree-widget.h"

#include "kovakit-qt/style/crisp-icons_p.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QCursor>
#include <QHeaderView>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QStyle>

namespace {

// The frame of a tree is one pixel wide, and rows are placed inside of it.
constexpr int frame = 1;

} // namespace

KovaTreeWidget::KovaTreeWidget(QWidget *parent)
    : QTreeWidget(parent)
{
    viewport()->setAttribute(Qt::WA_Hover);
}

KovaTreeWidget::~KovaTreeWidget()
{
    if (!m_isInRightPress)
        return;
    // Qt sends the viewport a context menu event when it has done with the press.
    QWidget *target = viewport();
    target->setParent(nullptr);
    target->deleteLater();
}

void KovaTreeWidget::setBackgroundColor(QColor selected, QColor hover)
{
    m_selectedColor = selected;
    m_hoverColor = hover;
    viewport()->update();
}

void KovaTreeWidget::setFocusColor(const QColor &color)
{
    m_focusColor = color;
    viewport()->update();
}

void KovaTreeWidget::updateScrollArea(QTreeWidgetItem *item)
{
    if (!item)
        return;
    const int width = viewport()->width();
    const QRect place = visualItemRect(item);
    const int begin = isRightToLeft() ? width - 1 - place.right() : place.left();
    if (begin >= 0 && begin + kovaPx(100) <= width)
        return;
    QScrollBar *bar = horizontalScrollBar();
    bar->setValue(begin + bar->value() - width / 2);
}

void KovaTreeWidget::keyPressEvent(QKeyEvent *event)
{
    const QPointer<KovaTreeWidget> guard(this);
    Q_EMIT sigKeyPressEvent(event);
    if (guard)
        QTreeWidget::keyPressEvent(event);
}

void KovaTreeWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        const QPointer<KovaTreeWidget> guard(this);
        m_isInRightPress = true;
        Q_EMIT sigMouseRightClickEvent(event);
        if (!guard)
            return;
        m_isInRightPress = false;
    }
    QTreeWidget::mousePressEvent(event);
}

void KovaTreeWidget::focusInEvent(QFocusEvent *)
{
    // Who is told that there is no current item may remove what was current.
    const QPersistentModelIndex current = indexFromItem(currentItem());
    setCurrentItem(current.isValid() ? itemAt(-1, -1) : itemAt(0, 0));
    if (current.isValid())
        setCurrentItem(itemFromIndex(current));
    viewport()->update();
}

void KovaTreeWidget::changeEvent(QEvent *event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange && testAttribute(Qt::WA_WState_Polished)) {
        // Style sheets look at a property only once.
        style()->unpolish(this);
        style()->polish(this);
    }
}

bool KovaTreeWidget::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        m_lastPointer = viewport()->mapTo(this, static_cast<QHoverEvent *>(event)->pos());
        setHoveredRow(rowAt(*m_lastPointer));
        break;
    case QEvent::HoverLeave:
    case QEvent::Leave:
        m_lastPointer.reset();
        setHoveredRow(QModelIndex());
        break;
    default:
        break;
    }
    return QTreeWidget::viewportEvent(event);
}

void KovaTreeWidget::scrollContentsBy(int dx, int dy)
{
    QTreeWidget::scrollContentsBy(dx, dy);
    if (m_lastPointer)
        setHoveredRow(rowAt(*m_lastPointer));
}

void KovaTreeWidget::selectionChanged(const QItemSelection &selected,
                                      const QItemSelection &deselected)
{
    QTreeWidget::selectionChanged(selected, deselected);
    // Left to itself the tree paints only the columns anew, and the highlight reaches beyond them.
    viewport()->update();
}

void KovaTreeWidget::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTreeWidget::currentChanged(current, previous);
    updateRow(previous);
    updateRow(current);
}

void KovaTreeWidget::paintEvent(QPaintEvent *event)
{
    // On X11 the question is a round trip to the server.
    m_paintPointer = mapFromGlobal(QCursor::pos());
    QTreeWidget::paintEvent(event);
    m_paintPointer.reset();
}

QPoint KovaTreeWidget::pointerPosition() const
{
    return m_paintPointer ? *m_paintPointer : mapFromGlobal(QCursor::pos());
}

bool KovaTreeWidget::isUnderPointer(const QRect &row) const
{
    // A scroll bar on the left side of the viewport moves the rows sideways as well.
    const int dx = isRightToLeft() ? viewport()->x() - frameWidth() : 0;
    return row.translated(dx, frame).contains(pointerPosition());
}

int KovaTreeWidget::leadingX() const
{
    const int offset = header()->offset();
    return isRightToLeft() ? viewport()->width() - 1 + offset : -offset;
}

QModelIndex KovaTreeWidget::rowAt(const QPoint &position) const
{
    // A row reaches beyond its columns: look for it where they begin.
    return indexAt({leadingX(), position.y() - frame});
}

void KovaTreeWidget::setHoveredRow(const QModelIndex &index) const
{
    const QModelIndex shown = index.siblingAtColumn(columnAt(leadingX()));
    if (m_hoveredRow == shown)
        return;
    updateRow(m_hoveredRow);
    updateRow(shown);
    m_hoveredRow = shown;
}

void KovaTreeWidget::updateRow(const QModelIndex &index) const
{
    const QRect row = visualRect(index);
    if (row.isValid())
        viewport()->update(0, row.top(), viewport()->width(), row.height());
}

void KovaTreeWidget::drawBranches(QPainter *painter, const QRect &rect,
                                  const QModelIndex &index) const
{
    const CrispIcons crisp;
    QTreeWidget::drawBranches(painter, rect, index);
}

void KovaTreeWidget::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    const QTreeWidgetItem *item = itemFromIndex(index);
    if (!item) {
        QTreeWidget::drawRow(painter, option, index);
        return;
    }
    if (selectionModel()->isRowSelected(index.row(), index.parent())) {
        drawHighlight(painter, option.rect, m_selectedColor);
    } else if (isUnderPointer(option.rect)) {
        drawHighlight(painter, option.rect, m_hoverColor);
        // What was painted before the pointer moved here may still show another row.
        setHoveredRow(index);
    }
    if (item->flags() & Qt::ItemIsUserCheckable) {
        QTreeWidget::drawRow(painter, option, index);
    } else {
        QStyleOptionViewItem rowOption = option;
        rowOption.state &= ~QStyle::State_Enabled;
        QTreeWidget::drawRow(painter, rowOption, index);
    }
    if (m_focusColor.isValid() && hasFocus() && item == currentItem())
        drawFocusRing(painter, option.rect);
}

QRect KovaTreeWidget::highlightRect(const QRect &row) const
{
    const int width = int(row.width() - 3 * DPIinfo::getInstance()->getDPI());
    const int left = isRightToLeft() ? row.left() + row.width() - width : row.left();
    return {left, row.top(), width, row.height()};
}

void KovaTreeWidget::drawFocusRing(QPainter *painter, const QRect &row) const
{
    const double width = qMax(1, kovaPx(2));
    // Inside the outline of the highlight.
    const double inset = 1 + width / 2;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(m_focusColor, width));
    painter->drawRoundedRect(QRectF(highlightRect(row)).adjusted(inset, inset, -inset, -inset),
                             kovaPx(2), kovaPx(2));
    painter->restore();
}

void KovaTreeWidget::drawHighlight(QPainter *painter, const QRect &row, const QColor &color) const
{
    painter->save();
    // Rows are repainted one by one: an outline over the edge would stay behind on the neighbours.
    painter->setClipRect(row, Qt::IntersectClip);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(QBrush(color, Qt::SolidPattern));
    painter->setPen(QColor(0xFF, 0xFF, 0xFF));
    painter->drawRoundedRect(highlightRect(row), kovaPx(3), kovaPx(3));
    painter->restore();
}
