// SPDX-License-Identifier: MIT

#include "kova-table-columns-info.h"

int KovaTableColumnsInfo::addColumn(const QString &title, int width, bool resizable, double ratio)
{
    m_columns.push_back({title, width, resizable, ratio});
    return int(m_columns.size()) - 1;
}
