// SPDX-License-Identifier: MIT

#include "kova-tree-widget.h"

#include "kovakit-qt/accessibility/tree-accessible_p.h"
#include "kovakit-qt/style/crisp-icons_p.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QCursor>
#include <QHeaderView>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QPainter>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QScrollBar>
#include <QStyle>

#include <optional>

namespace {

// The frame of a tree is one pixel wide, and rows are placed inside of it.
constexpr int frame = 1;

// Hosts open their menu from a signal of the tree.
class FolderTreeAccessible : public TreeAccessible
{
public:
    using TreeAccessible::TreeAccessible;

    bool hasMenu() const override
    {
        class Open : public KovaTreeWidget
        {
        public:
            static bool isAskedForMenu(const QObject *tree)
            {
                return (tree->*&Open::isSignalConnected)(
                    QMetaMethod::fromSignal(&KovaTreeWidget::sigMouseRightClickEvent));
            }
        };
        return TreeAccessible::hasMenu() || Open::isAskedForMenu(object());
    }
};

} // namespace

class KovaTreeWidget::Private
{
public:
    explicit Private(KovaTreeWidget *tree)
        : q(tree)
    {
    }

    [[nodiscard]] QPoint pointerPosition() const;
    [[nodiscard]] bool isUnderPointer(const QRect &row) const;
    [[nodiscard]] int leadingX() const;
    [[nodiscard]] QModelIndex rowAt(const QPoint &position) const;
    void setHoveredRow(const QModelIndex &index);
    void updateRow(const QModelIndex &index) const;
    [[nodiscard]] QRect highlightRect(const QRect &row) const;
    void drawFocusRing(QPainter *painter, const QRect &row) const;
    void drawHighlight(QPainter *painter, const QRect &row, const QColor &color) const;

    KovaTreeWidget *const q;
    QColor selectedColor;
    QColor hoverColor;
    QColor focusColor;
    bool isInRightPress = false;
    std::optional<QPoint> paintPointer;
    std::optional<QPoint> lastPointer;
    QPersistentModelIndex hoveredRow;
};

KovaTreeWidget::KovaTreeWidget(QWidget *parent)
    : QTreeWidget(parent)
    , d(std::make_unique<Private>(this))
{
    QAccessible::installFactory(createAccessible<KovaTreeWidget, FolderTreeAccessible>);
    renewAccessible(this);
    viewport()->setAttribute(Qt::WA_Hover);
}

KovaTreeWidget::~KovaTreeWidget()
{
    if (!d->isInRightPress)
        return;
    // Qt sends the viewport a context menu event when it has done with the press.
    QWidget *target = viewport();
    target->setParent(nullptr);
    target->deleteLater();
}

void KovaTreeWidget::setBackgroundColor(QColor selected, QColor hover)
{
    d->selectedColor = selected;
    d->hoverColor = hover;
    viewport()->update();
}

QColor KovaTreeWidget::focusColor() const
{
    return d->focusColor;
}

void KovaTreeWidget::setFocusColor(const QColor &color)
{
    d->focusColor = color;
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
        d->isInRightPress = true;
        Q_EMIT sigMouseRightClickEvent(event);
        if (!guard)
            return;
        d->isInRightPress = false;
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
        d->lastPointer = viewport()->mapTo(this, static_cast<QHoverEvent *>(event)->pos());
        d->setHoveredRow(d->rowAt(*d->lastPointer));
        break;
    case QEvent::HoverLeave:
    case QEvent::Leave:
        d->lastPointer.reset();
        d->setHoveredRow(QModelIndex());
        break;
    default:
        break;
    }
    return QTreeWidget::viewportEvent(event);
}

void KovaTreeWidget::scrollContentsBy(int dx, int dy)
{
    QTreeWidget::scrollContentsBy(dx, dy);
    if (d->lastPointer)
        d->setHoveredRow(d->rowAt(*d->lastPointer));
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
    d->updateRow(previous);
    d->updateRow(current);
}

void KovaTreeWidget::paintEvent(QPaintEvent *event)
{
    // On X11 the question is a round trip to the server.
    d->paintPointer = mapFromGlobal(QCursor::pos());
    QTreeWidget::paintEvent(event);
    d->paintPointer.reset();
}

QPoint KovaTreeWidget::Private::pointerPosition() const
{
    return paintPointer ? *paintPointer : q->mapFromGlobal(QCursor::pos());
}

bool KovaTreeWidget::Private::isUnderPointer(const QRect &row) const
{
    // A scroll bar on the left side of the viewport moves the rows sideways as well.
    const int dx = q->isRightToLeft() ? q->viewport()->x() - q->frameWidth() : 0;
    return row.translated(dx, frame).contains(pointerPosition());
}

int KovaTreeWidget::Private::leadingX() const
{
    const int offset = q->header()->offset();
    return q->isRightToLeft() ? q->viewport()->width() - 1 + offset : -offset;
}

QModelIndex KovaTreeWidget::Private::rowAt(const QPoint &position) const
{
    // A row reaches beyond its columns: look for it where they begin.
    return q->indexAt({leadingX(), position.y() - frame});
}

void KovaTreeWidget::Private::setHoveredRow(const QModelIndex &index)
{
    const QModelIndex shown = index.siblingAtColumn(q->columnAt(leadingX()));
    if (hoveredRow == shown)
        return;
    updateRow(hoveredRow);
    updateRow(shown);
    hoveredRow = shown;
}

void KovaTreeWidget::Private::updateRow(const QModelIndex &index) const
{
    const QRect row = q->visualRect(index);
    if (row.isValid())
        q->viewport()->update(0, row.top(), q->viewport()->width(), row.height());
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
        d->drawHighlight(painter, option.rect, d->selectedColor);
    } else if (d->isUnderPointer(option.rect)) {
        d->drawHighlight(painter, option.rect, d->hoverColor);
        // What was painted before the pointer moved here may still show another row.
        d->setHoveredRow(index);
    }
    if (item->flags() & Qt::ItemIsUserCheckable) {
        QTreeWidget::drawRow(painter, option, index);
    } else {
        QStyleOptionViewItem rowOption = option;
        rowOption.state &= ~QStyle::State_Enabled;
        QTreeWidget::drawRow(painter, rowOption, index);
    }
    if (d->focusColor.isValid() && hasFocus() && item == currentItem())
        d->drawFocusRing(painter, option.rect);
}

QRect KovaTreeWidget::Private::highlightRect(const QRect &row) const
{
    const int width = int(row.width() - 3 * DPIinfo::getInstance()->getDPI());
    const int left = q->isRightToLeft() ? row.left() + row.width() - width : row.left();
    return {left, row.top(), width, row.height()};
}

void KovaTreeWidget::Private::drawFocusRing(QPainter *painter, const QRect &row) const
{
    const double width = qMax(1, kovaPx(2));
    // Inside the outline of the highlight.
    const double inset = 1 + width / 2;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(focusColor, width));
    painter->drawRoundedRect(QRectF(highlightRect(row)).adjusted(inset, inset, -inset, -inset),
                             kovaPx(2), kovaPx(2));
    painter->restore();
}

void KovaTreeWidget::Private::drawHighlight(QPainter *painter, const QRect &row,
                                            const QColor &color) const
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
