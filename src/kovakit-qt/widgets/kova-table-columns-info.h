// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

#include <vector>

/**
 * The columns of a KovaTableWidget, described before the table is made. A plain value.
 *
 *     KovaTableColumnsInfo columns;
 *     columns.addColumn(tr("Time"), 140, false, 0);
 *     columns.addColumn(tr("Message"), 200, true, 1.0);
 */
class KOVAKIT_EXPORT KovaTableColumnsInfo
{
public:
    /** One column. */
    struct ColumnInfo
    {
        /** What the header says. */
        QString title;
        /** In design pixels: the width of a fixed column, the least width of one with a share. */
        int width;
        /** Whether the user may drag the column's edge. */
        bool resizable;
        /**
         * The share of a resizable column in the width that the fixed ones leave over: 0.5 is half
         * of it. With 0 the column keeps its width, as fixed ones do, but can still be dragged.
         * Shares need not add up to 1: less leaves room at the end, more makes the table scroll.
         */
        double ratio;
    };

    /** Appends a column, see ColumnInfo, and returns its index. */
    int addColumn(const QString &title, int width, bool resizable, double ratio);

    /** All columns in the order in which they were added. */
    [[nodiscard]] const std::vector<ColumnInfo> &columns() const { return m_columns; }

private:
    std::vector<ColumnInfo> m_columns;
};
