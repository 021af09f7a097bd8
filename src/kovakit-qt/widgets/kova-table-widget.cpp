#include "kova-table-widget.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/escape-tooltip.h>

#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
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

class AlignedHeader : public QHeaderView
{
public:
    using QHeaderView::QHeaderView;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        m_pressX = x();
        QHeaderView::mousePressEvent(event);
    }

    // The header moves with the rows, which slide along when a column at their end gets narrower.
    // Counted in the header, the edge that is dragged would run away from the pointer.
    void mouseMoveEvent(QMouseEvent *event) override
    {
        const int moved = event->buttons() ? x() - m_pressX : 0;
        QMouseEvent unmoved(event->type(), event->localPos() + QPointF(moved, 0),
                            event->windowPos(), event->screenPos(), event->button(),
                            event->buttons(), event->modifiers());
        QHeaderView::mouseMoveEvent(&unmoved);
    }

    // From right to left a header paints its sections one pixel further right than it says they
    // are, where the lines of a table's grid would be.
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override
    {
        QHeaderView::paintSection(painter, isRightToLeft() ? rect.translated(-1, 0) : rect,
                                  logicalIndex);
    }

private:
    int m_pressX = 0;
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

KovaTableWidget::KovaTableWidget(const KovaTableColumnsInfo &columns, QWidget *parent)
    : QWidget(parent)
    , m_columns(columns)
{
    initailze();
}

KovaTableWidget::~KovaTableWidget()
{
    // The header goes before the table that is its model.
    delete m_headerArea;
}

void KovaTableWidget::initailze()
{
    if (m_layout)
        return;
    m_layout = new QVBoxLayout(this);
    m_layout->setSpacing(0);
    m_layout->setContentsMargins(0, 0, 0, 0);
    makeHeader();
    makeTable();
    setUpColumns();

    connect(m_header, &QHeaderView::sectionResized, this, &KovaTableWidget::slotSectionResized);
    connect(m_table->horizontalHeader(), &QHeaderView::sectionResized, this,
            &KovaTableWidget::followRows);
    connect(m_table->verticalScrollBar(), &QScrollBar::rangeChanged, this,
            &KovaTableWidget::slotVerticalScrollRangeChanged);
    connect(m_table->horizontalScrollBar(), &QScrollBar::valueChanged,
            m_headerArea->horizontalScrollBar(), &QScrollBar::setValue);
    connect(m_table, &ResizeSignalTableWidget::sigResized, this, [this](QSize size) {
        // A horizontal scroll bar that comes up, as a column is dragged wider, takes height alone.
        if (size.width() != m_sharedWidth)
            slotTableResized(size);
    });
}

void KovaTableWidget::makeHeader()
{
    m_headerArea = new QScrollArea;
    m_headerArea->setFixedHeight(kovaPx(designHeaderHeight));
    m_headerArea->setFocusPolicy(Qt::NoFocus);
    m_headerArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_headerArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_headerArea->setStyleSheet(QStringLiteral("QScrollArea { border: none; }"));
    m_layout->addWidget(m_headerArea);

    m_headerLabels = std::make_unique<QTableWidget>(0, int(m_columns.columns().size()) + 1);
    m_header = new AlignedHeader(Qt::Horizontal);
    m_header->setModel(m_headerLabels->model());
    m_header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_header->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_header->setStyleSheet(getStyleSheet("component.table_header", false));
    // Wider than any screen: the area shows a part of it.
    m_header->setFixedSize(kovaPx(20000), kovaPx(designHeaderHeight));
    m_headerArea->setWidget(m_header);
}

void KovaTableWidget::makeTable()
{
    m_table = new ResizeSignalTableWidget(0, int(m_columns.columns().size()));
    m_layout->addWidget(m_table);
    m_table->setItemDelegate(new CellDelegate(m_table));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    // Rows are walked with the arrow keys; Tab leads on to the next widget.
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->hide();
    m_table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->verticalHeader()->setDefaultSectionSize(kovaPx(28));
    m_table->setStyleSheet(getStyleSheet("component.table", false)
                           + getStyleSheet("component.scrollbar", false));
    m_table->setShowGrid(false);
    m_table->verticalScrollBar()->hide();
}

void KovaTableWidget::setUpColumns()
{
    QStringList titles;
    int narrowest = designScrollBarWidth;
    for (const ColumnInfo &column : m_columns.columns()) {
        titles.append(column.title);
        narrowest = qMin(narrowest, column.width);
    }
    // Not shown, but read out for the cells.
    m_table->setHorizontalHeaderLabels(titles);
    titles.append(QString());
    m_headerLabels->setHorizontalHeaderLabels(titles);

    // Headers widen what is narrower than the widest letter.
    QHeaderView *const headers[] = {m_header, m_headerLabels->horizontalHeader(),
                                    m_table->horizontalHeader()};
    for (QHeaderView *header : headers)
        header->setMinimumSectionSize(qMax(1, kovaPx(narrowest)));

    int index = 0;
    for (const ColumnInfo &column : m_columns.columns()) {
        for (QHeaderView *header : headers)
            header->resizeSection(index, kovaPx(column.width));
        m_header->setSectionResizeMode(index, resizeMode(column));
        m_table->horizontalHeader()->setSectionResizeMode(index, resizeMode(column));
        ++index;
    }
    m_header->resizeSection(index, kovaPx(designScrollBarWidth));
    m_headerLabels->horizontalHeader()->resizeSection(index, kovaPx(designScrollBarWidth));
    m_header->setSectionResizeMode(index, QHeaderView::Fixed);
}

void KovaTableWidget::slotSectionResized(int logicalIndex, int, int newSize)
{
    follow(m_table->horizontalHeader(), logicalIndex, newSize);
    // Left to itself the table would be painted one turn of the event loop after the header.
    m_table->viewport()->update();
}

void KovaTableWidget::followRows(int logicalIndex, int, int newSize)
{
    follow(m_header, logicalIndex, newSize);
}

void KovaTableWidget::follow(QHeaderView *other, int logicalIndex, int newSize)
{
    if (m_following)
        return;
    const bool isHidingOrShowing = other->isSectionHidden(logicalIndex) != (newSize == 0);
    {
        const QScopedValueRollback<bool> following(m_following, true);
        fitSection(other, logicalIndex, newSize);
    }
    if (isHidingOrShowing && m_sharedWidth >= 0)
        slotTableResized({m_sharedWidth, 0});
}

void KovaTableWidget::slotVerticalScrollRangeChanged(int, int max)
{
    m_table->verticalScrollBar()->setVisible(max != 0);
}

void KovaTableWidget::slotTableResized(QSize size)
{
    m_sharedWidth = size.width();
    const double scale = DPIinfo::getInstance()->getDPI();
    double fixedWidth = 0;
    double allShares = 0;
    double shownShares = 0;
    int index = 0;
    for (const ColumnInfo &column : m_columns.columns()) {
        const bool isShown = m_header->sectionSize(index++) != 0;
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
    for (const ColumnInfo &column : m_columns.columns()) {
        if (hasShare(column) && m_header->sectionSize(index) != 0)
            m_header->resizeSection(
                index, truncated(qMax(column.ratio * growth * spare, column.width * scale)));
        ++index;
    }
}
