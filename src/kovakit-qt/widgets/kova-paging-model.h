// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QObject>

#include <memory>

/**
 * The arithmetic of a list that is shown one page at a time.
 *
 * It holds three numbers: rows per page, items in all and the current page, which counts from 1.
 * The host owns the model, gives it to a KovaPagingBar, and reads startItem() and rowLimit() to
 * fetch the rows of the current page. The model says nothing when it changes; what the user does is
 * told by the bar.
 */
class KOVAKIT_EXPORT KovaPagingModel : public QObject
{
    Q_OBJECT

public:
    /** A model of no items on page 1, with @p rowLimit rows per page. @p parent owns it, if any. */
    explicit KovaPagingModel(int rowLimit, QObject *parent = nullptr);
    ~KovaPagingModel() override;

    /** Rows per page. */
    [[nodiscard]] int rowLimit() const;

    /**
     * Sets the rows per page; neither the current page nor any bar follows.
     *
     * With a limit of 0 or less nothing is divided: everything is on one page.
     */
    void setRowLimit(int rowLimit);

    /** Items on all pages together. */
    [[nodiscard]] int itemCount() const;

    /** Sets the number of items. A bar has a setItemCount() of its own, which also shows it. */
    void setItemCount(int itemCount);

    /** The current page; the first is 1. */
    [[nodiscard]] int nowPage() const;

    /** Stores @p page as it is, even beyond pageCount(). A bar is turned with its setPage(). */
    void setNowPage(int page);

    /** The number of pages that the items fill, at least 1. */
    [[nodiscard]] int pageCount() const;

    /**
     * The index of the current page's first item, counted from 0: the pages before it times the row
     * limit. Kept within the range of an int; 0 before the first page, and where everything is on
     * one page for want of a limit. May lie beyond the last item.
     */
    [[nodiscard]] int startItem() const;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
