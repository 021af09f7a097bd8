// SPDX-License-Identifier: MIT

#include "resize-signal-table-widget.h"

#include <QResizeEvent>

ResizeSignalTableWidget::ResizeSignalTableWidget(int rows, int columns)
    : QTableWidget(rows, columns)
{
}

void ResizeSignalTableWidget::resizeEvent(QResizeEvent *event)
{
    Q_EMIT sigResized(event->size());
    QTableWidget::resizeEvent(event);
}
