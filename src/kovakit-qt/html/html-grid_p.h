// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>

// The grid of a table, as it grows row by row and cell by cell.
class HtmlGrid
{
public:
    void addRow();
    // Puts a cell into the last row, at the first column that no cell of an earlier row covers, but
    // not beyond @p maxColumns.
    void addCell(int rowSpan, int columnSpan, int maxColumns);

    [[nodiscard]] qint64 slotCount() const { return m_rows * m_columns.size(); }
    // Whether cells lie on top of each other. Qt then joins fewer of them than the text says, and
    // content can end up in other cells.
    [[nodiscard]] bool hasOverlap() const { return m_hasOverlap; }

private:
    struct Cover
    {
        qint64 endRow = 0;
        int columnSpan = 1;
    };
    QVector<Cover> m_columns;
    qint64 m_rows = 0;
    int m_nextColumn = 0;
    bool m_hasOverlap = false;
};
