// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QTableWidget>

/** A table that tells of every change of its size, before it lays its columns out. */
class KOVAKIT_EXPORT ResizeSignalTableWidget : public QTableWidget
{
    Q_OBJECT

public:
    /** A table without parent, of @p rows rows and @p columns columns. */
    ResizeSignalTableWidget(int rows, int columns);

Q_SIGNALS:
    /**
     * The area of the rows is now of @p size, in device pixels. Emitted before the scroll bars are
     * fitted to it; Qt is in the middle of a layout then, so do not delete the table in a slot, use
     * deleteLater().
     */
    void sigResized(QSize size);

protected:
    /** Emits sigResized(), then resizes as any table does. */
    void resizeEvent(QResizeEvent *event) override;
};
