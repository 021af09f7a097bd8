// SPDX-License-Identifier: MIT

#include "kova-table-widget.h"

#include "table-header_p.h"

#include "kovakit-qt/accessibility/announcement_p.h"
#include "kovakit-qt/accessibility/table-accessible_p.h"
#include "kovakit-qt/accessibility/title-accessible_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/escape-tooltip.h>

#include <QHelpEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

namespace {

using ColumnInfo = KovaTableColumnsInfo::ColumnInfo;

constexpr int designHeaderHeight = 30;
constexpr int designScrollBarWidth = 12;

bool hasShare(const ColumnInfo &column)
{
    return column.resizable && column.ratio != 0;
}

int truncated(double pixels)
{
    return int(qBound(0.0, pixels, double(std::numeric_limits<int>::max())));
}

QHeaderView::ResizeMode resizeMode(const ColumnInfo &column)
{
    return column.resizable ? QHeaderView::Interactive : QHeaderView::Fixed;
}

// A section that is being hidden shrinks to nothing first, and keeps its size for the day when it
// is shown again.
void fitSection(QHeaderView *header, int logicalIndex, int size)
{
    header->setSectionHidden(logicalIndex, size == 0);
    if (size != 0)
        header->resizeSection(logicalIndex, size);
}

// Left to itself an area scrolls to a widget that gets the focus. This one follows the rows.
class HeaderArea : public QScrollArea
{
protected:
    bool focusNextPrevChild(bool next) override
    {
        return QWidget::focusNextPrevChild(next); // NOLINT(bugprone-parent-virtual-call)
    }
};

// Shows the whole text of a cell that is too narrow for it, unless the cell has a tooltip.
class CellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        // Text that wraps is cut at its height.
        const QSize needed = sizeHint(option, index);
        const bool isCut =
            needed.width() > option.rect.width() || needed.height() > option.rect.height();
        if (event->type() != QEvent::ToolTip || !isCut
            || !index.data(Qt::ToolTipRole).toString().isEmpty())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const QString text = displayText(index.data(), option.locale);
        QToolTip::showText(event->globalPos(), getHtmlEscapedStringForToolTip(text), view,
                           option.rect);
        return true;
    }
};

} // namespace

class KovaTableWidget::Private
{
public:
    Private(KovaTableWidget *widget, const KovaTableColumnsInfo &columnsInfo)
        : q(widget)
        , columns(columnsInfo)
    {
    }

    void setUpHeader();
    void setUpTable();
    void setUpColumns();
    void followRows(int logicalIndex, int newSize);
    void follow(QHeaderView *other, int logicalIndex, int newSize);
    void showSection(int section) const;
    void tellOfFocus(int section) const;
    void tellOfOrder(int section) const;

    KovaTableWidget *const q;
    const KovaTableColumnsInfo columns;
    QScrollArea *headerArea = nullptr;
    TableHeader *header = nullptr;
    std::unique_ptr<QTableWidget> headerLabels;
    // The host may delete it.
    QPointer<ResizeSignalTableWidget> table;
    QVBoxLayout *layout = nullptr;
    bool isFollowing = false;
    int sharedWidth = -1;
};

KovaTableWidget::KovaTableWidget(const KovaTableColumnsInfo &columns, QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this, columns))
{
    installTableAccessibility<ResizeSignalTableWidget, TableHeader, KovaTableWidget>();
    initailze();
}

KovaTableWidget::~KovaTableWidget()
{
    // A view that ends may emit signals, whose slots read d. The header goes before the table of
    // labels that is its model.
    delete d->table.data();
    delete d->headerArea;
}

ResizeSignalTableWidget *KovaTableWidget::getTable() const
{
    return d->table;
}

QHeaderView *KovaTableWidget::getHeader() const
{
    return d->header;
}

void KovaTableWidget::initailze()
{
    if (d->layout)
        return;
    d->layout = new QVBoxLayout(this);
    d->layout->setSpacing(0);
    d->layout->setContentsMargins(0, 0, 0, 0);
    d->setUpHeader();
    d->setUpTable();
    d->setUpColumns();

    connect(d->header, &QHeaderView::sectionResized, this, &KovaTableWidget::slotSectionResized);
    connect(d->table->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int logicalIndex, int, int newSize) { d->followRows(logicalIndex, newSize); });
    connect(d->table->verticalScrollBar(), &QScrollBar::rangeChanged, this,
            &KovaTableWidget::slotVerticalScrollRangeChanged);
    connect(d->table->horizontalScrollBar(), &QScrollBar::valueChanged,
            d->headerArea->horizontalScrollBar(), &QScrollBar::setValue);
    connect(d->table, &ResizeSignalTableWidget::sigResized, this, [this](QSize size) {
        // A horizontal scroll bar that comes up, as a column is dragged wider, takes height alone.
        if (size.width() != d->sharedWidth)
            slotTableResized(size);
    });
    connect(d->header, &TableHeader::cursorMoved, this, [this](int section) {
        d->showSection(section);
        // Qt tells of the focus of the header itself after the header was told.
        QMetaObject::invokeMethod(
            this, [this, section] { d->tellOfFocus(section); }, Qt::QueuedConnection);
    });
    connect(d->header, &QHeaderView::sortIndicatorChanged, this,
            [this](int section) { d->tellOfOrder(section); });
}

void KovaTableWidget::Private::setUpHeader()
{
    headerArea = new HeaderArea;
    headerArea->setFixedHeight(kovaPx(designHeaderHeight));
    headerArea->setFocusPolicy(Qt::NoFocus);
    headerArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    headerArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    headerArea->setStyleSheet(QStringLiteral("QScrollArea { border: none; }"));
    layout->addWidget(headerArea);

    headerLabels = std::make_unique<QTableWidget>(0, int(columns.columns().size()) + 1);
    header = new TableHeader(int(columns.columns().size()));
    header->setModel(headerLabels->model());
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    header->setStyleSheet(getStyleSheet("component.table_header", false));
    // Wider than any screen: the area shows a part of it.
    header->setFixedSize(kovaPx(20000), kovaPx(designHeaderHeight));
    headerArea->setWidget(header);
}

void KovaTableWidget::Private::setUpTable()
{
    table = new ResizeSignalTableWidget(0, int(columns.columns().size()));
    layout->addWidget(table);
    renewAccessible(table);
    table->setItemDelegate(new CellDelegate(table));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    // Rows are walked with the arrow keys; Tab leads on to the next widget.
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->hide();
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->setDefaultSectionSize(kovaPx(28));
    table->setStyleSheet(getStyleSheet("component.table", false)
                         + getStyleSheet("component.scrollbar", false));
    table->setShowGrid(false);
    table->verticalScrollBar()->hide();
}

void KovaTableWidget::Private::setUpColumns()
{
    QStringList titles;
    int narrowest = designScrollBarWidth;
    for (const ColumnInfo &column : columns.columns()) {
        titles.append(column.title);
        narrowest = qMin(narrowest, column.width);
    }
    // Not shown, but read out for the cells.
    table->setHorizontalHeaderLabels(titles);
    titles.append(QString());
    headerLabels->setHorizontalHeaderLabels(titles);

    // Headers widen what is narrower than the widest letter.
    QHeaderView *const headers[] = {header, headerLabels->horizontalHeader(),
                                    table->horizontalHeader()};
    for (QHeaderView *view : headers)
        view->setMinimumSectionSize(qMax(1, kovaPx(narrowest)));

    int index = 0;
    for (const ColumnInfo &column : columns.columns()) {
        for (QHeaderView *view : headers)
            view->resizeSection(index, kovaPx(column.width));
        header->setSectionResizeMode(index, resizeMode(column));
        table->horizontalHeader()->setSectionResizeMode(index, resizeMode(column));
        ++index;
    }
    header->resizeSection(index, kovaPx(designScrollBarWidth));
    headerLabels->horizontalHeader()->resizeSection(index, kovaPx(designScrollBarWidth));
    header->setSectionResizeMode(index, QHeaderView::Fixed);
}

void KovaTableWidget::slotSectionResized(int logicalIndex, int, int newSize)
{
    d->follow(d->table->horizontalHeader(), logicalIndex, newSize);
    // Left to itself the table would be painted one turn of the event loop after the header.
    d->table->viewport()->update();
}

void KovaTableWidget::Private::followRows(int logicalIndex, int newSize)
{
    follow(header, logicalIndex, newSize);
}

void KovaTableWidget::Private::follow(QHeaderView *other, int logicalIndex, int newSize)
{
    if (isFollowing)
        return;
    const bool isHidingOrShowing = other->isSectionHidden(logicalIndex) != (newSize == 0);
    {
        const QScopedValueRollback<bool> rollback(isFollowing, true);
        fitSection(other, logicalIndex, newSize);
    }
    if (isHidingOrShowing && sharedWidth >= 0)
        q->slotTableResized({sharedWidth, 0});
}

void KovaTableWidget::Private::showSection(int section) const
{
    if (!table)
        return;
    const QWidget *viewport = table->viewport();
    const QRect seen = header->sectionRect(section).translated(header->mapTo(q, QPoint())
                                                               - viewport->mapTo(q, QPoint()));
    const int beyondRight = seen.right() + 1 - viewport->width();
    const bool isWide = seen.width() > viewport->width();
    int hidden = 0;
    if (isWide)
        hidden = q->isRightToLeft() ? beyondRight : seen.left();
    else
        hidden = seen.left() < 0 ? seen.left() : qMax(0, beyondRight);
    QScrollBar *bar = table->horizontalScrollBar();
    bar->setValue(bar->value() + (q->isRightToLeft() ? -hidden : hidden));
}

void KovaTableWidget::Private::tellOfFocus(int section) const
{
    if (!QAccessible::isActive() || !table || !header->hasFocus())
        return;
    QAccessibleEvent event(table, QAccessible::Focus);
    // The first is the corner over the numbers of the rows.
    event.setChild(section + 1);
    QAccessible::updateAccessibility(&event);
}

void KovaTableWidget::Private::tellOfOrder(int section) const
{
    if (!QAccessible::isActive() || !table || !header->isVisible()
        || section >= table->columnCount())
        return;
    QAccessibleEvent event(table, QAccessible::DescriptionChanged);
    event.setChild(section + 1);
    QAccessible::updateAccessibility(&event);
    const QString order = sortedDescription(header, section);
    const QString title = header->model()->headerData(section, Qt::Horizontal).toString();
    announce(q, order.isEmpty() ? order : title + QStringLiteral(", ") + order);
}

void KovaTableWidget::slotVerticalScrollRangeChanged(int, int max)
{
    d->table->verticalScrollBar()->setVisible(max != 0);
}

void KovaTableWidget::slotTableResized(QSize size)
{
    d->sharedWidth = size.width();
    const double scale = DPIinfo::getInstance()->getDPI();
    double fixedWidth = 0;
    double allShares = 0;
    double shownShares = 0;
    int index = 0;
    for (const ColumnInfo &column : d->columns.columns()) {
        const bool isShown = d->header->sectionSize(index++) != 0;
        if (hasShare(column)) {
            allShares += column.ratio;
            shownShares += isShown ? column.ratio : 0;
        } else if (isShown) {
            fixedWidth += column.width;
        }
    }
    const double spare = std::trunc(size.width() - fixedWidth * scale);
    // The columns that are shown have the shares of the hidden ones as well.
    const double growth = shownShares != 0 ? allShares / shownShares : 1;

    index = 0;
    for (const ColumnInfo &column : d->columns.columns()) {
        if (hasShare(column) && d->header->sectionSize(index) != 0)
            d->header->resizeSection(
                index, truncated(qMax(column.ratio * growth * spare, column.width * scale)));
        ++index;
    }
}
