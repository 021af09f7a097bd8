// SPDX-License-Identifier: MIT

#pragma once

#include "view-accessible_p.h"

#include <QHash>
#include <QVector>

class QTreeView;

// Reports a tree with the rows that are unfolded, and tells of check marks that come and go.
class TreeAccessible : public ViewAccessible
{
public:
    explicit TreeAccessible(QTreeView *tree);

    QHeaderView *columnHeader() const override;
    int rowOf(const QModelIndex &index) const override;
    QModelIndex indexAt(int row, int column) const override;
    int rowCount() const override;

private:
    // Rows can be hidden, of which nobody tells but the painting that follows.
    class PaintWatch : public QObject
    {
    public:
        explicit PaintWatch(TreeAccessible *owner);
        bool eventFilter(QObject *viewport, QEvent *event) override;

    private:
        TreeAccessible *const m_owner;
    };

    [[nodiscard]] QTreeView *tree() const;
    [[nodiscard]] const QVector<QModelIndex> &rows() const;
    void addRows(const QModelIndex &parent) const;
    void forgetRows();
    void tellOfCheck(const QModelIndex &first, const QModelIndex &last) const;

    // The unfolded rows, as long as they stay so.
    mutable QVector<QModelIndex> m_rows;
    mutable QHash<QModelIndex, int> m_numbers;
    PaintWatch m_watch;
};
