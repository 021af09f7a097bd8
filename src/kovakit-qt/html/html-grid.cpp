// SPDX-License-Identifier: MIT

#include "html-grid_p.h"

void HtmlGrid::addRow()
{
    ++m_rows;
    m_nextColumn = 0;
}

void HtmlGrid::addCell(int rowSpan, int columnSpan, int maxColumns)
{
    const qint64 row = m_rows - 1;
    while (m_nextColumn < m_columns.size() && m_columns.at(m_nextColumn).endRow > row)
        m_nextColumn += m_columns.at(m_nextColumn).columnSpan;

    const int end = qMin(m_nextColumn + columnSpan, maxColumns);
    if (m_columns.size() < end)
        m_columns.resize(end);
    for (int column = m_nextColumn; column < end; ++column) {
        m_hasOverlap |= m_columns.at(column).endRow > row;
        m_columns[column] = {row + rowSpan, columnSpan};
    }
    m_nextColumn += columnSpan;
}
