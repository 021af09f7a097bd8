// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/widgets/kova-table-columns-info.h>
#include <kovakit-qt/widgets/resize-signal-table-widget.h>

#include <QWidget>

#include <memory>

class QHeaderView;

/**
 * A table of rows under a header of its own, whose columns share the width of the table.
 *
 * The header is a view apart above the rows, so that it can be styled apart and reaches over the
 * vertical scroll bar. The rows follow the header when an edge is dragged, the header follows the
 * rows sideways, and a column that is hidden, shown or resized in one of the two changes in the
 * other as well. Fill the table through getTable():
 *
 *     auto *view = new KovaTableWidget(columns, this);
 *     view->getTable()->setRowCount(1);
 *     view->getTable()->setItem(0, 0, new QTableWidgetItem(tr("12:04")));
 *
 * The header takes the focus by Tab, before the rows, if its columns can be resized or, when it is
 * shown, clicked. A ring marks a title then: Left, Right, Home and End walk, Space and Return do
 * what a click does, and Alt or Shift with Left and Right move the edge of the column by 8 design
 * pixels. To assistive technology the titles are those of the table; it can press and resize them
 * too. The table is read out under the accessible name of this widget, unless it has one of its
 * own.
 *
 * A cell that is too narrow for its text shows it as a tooltip, unless the item has one of its own
 * or the host sets another delegate. The columns stay what they were made as: do not add, remove or
 * move any. Three things cost dearly with many rows: sorting while rows are filled in (it also
 * misplaces them), resizing to contents, and cell widgets. The styles "component.table" and
 * "component.scrollbar" make up the look of the rows, "component.table_header" that of the header,
 * in which "qproperty-focusColor" for TableHeader is the colour of the ring;
 * a border at the left of the rows would move them out from under the header.
 */
class KOVAKIT_EXPORT KovaTableWidget : public QWidget
{
    Q_OBJECT

public:
    /** A table of @p columns, which are copied, and no rows. */
    explicit KovaTableWidget(const KovaTableColumnsInfo &columns, QWidget *parent = nullptr);
    ~KovaTableWidget() override;

    /** Builds header and rows. Called by the constructor; later calls do nothing. */
    void initailze();

    /** The rows, to be filled by the host. Owned by this widget. */
    [[nodiscard]] ResizeSignalTableWidget *getTable() const;

    /**
     * The header. It has one column more than the rows, without a title, over the scroll bar. Owned
     * by this widget.
     */
    [[nodiscard]] QHeaderView *getHeader() const;

public Q_SLOTS:
    /** Gives column @p logicalIndex of the rows the width @p newSize, in device pixels. */
    void slotSectionResized(int logicalIndex, int oldSize, int newSize);

    /** Hides the vertical scroll bar if @p max is 0, when all rows fit; otherwise shows it. */
    void slotVerticalScrollRangeChanged(int min, int max);

    /**
     * Shares the width that the fixed columns leave over in @p size, in device pixels, whatever
     * widths the user gave to the columns.
     *
     * Called when the width of the rows changes, and when a column is hidden or shown: a hidden
     * column takes no width, and its share goes to those that are shown, in their proportion.
     */
    void slotTableResized(QSize size);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
