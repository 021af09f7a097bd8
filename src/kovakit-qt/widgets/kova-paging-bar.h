// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>
#include <QWidget>

#include <memory>
#include <vector>

class KovaPagingModel;

/** One text at the right end of a KovaPagingBar. A plain value. */
struct PagingFooterInfo
{
    /** What the label shows. */
    QString text;
    /** The label's fixed width in design pixels; 0 lets it be as wide as its text. */
    int width = 0;
};

/**
 * The strip under a paged list: first page, back five, five numbered pages, forward five, last
 * page, a refresh button and texts of the host.
 *
 * The current page is always on the middle one of the five; a number that does not exist leaves its
 * button blank and disabled. The bar turns the pages of a KovaPagingModel and tells the host, which
 * then fetches the rows of the model's nowPage():
 *
 *     auto *model = new KovaPagingModel(50, this);
 *     auto *bar = new KovaPagingBar(model, this);
 *     connect(bar, &KovaPagingBar::sigPageChanged, this, &LogView::loadPage);
 *     bar->setItemCount(countOfRows); // shows the pages; loadPage() is the host's to call
 *
 * The strings "first_page", "prev_5_pages", "next_5_pages", "last_page" and "pagebar_refresh" must
 * be installed. Two more are used if they are: "accessible_page" ("Page %1") names a page button
 * for screen readers, otherwise its number does; "accessible_current_page" ("Current page, %1 of
 * %2") describes the current one, otherwise the two numbers do; the description is said when the
 * user has gone to another page.
 */
class KOVAKIT_EXPORT KovaPagingBar : public QWidget
{
    Q_OBJECT

public:
    /**
     * A bar for @p model, which is reset to page 1 and no items.
     *
     * The model is borrowed and must live as long as the bar is used. Until the first setPage() or
     * setItemCount() the middle button says "1" and the other four have no text.
     */
    explicit KovaPagingBar(KovaPagingModel *model, QWidget *parent = nullptr);
    ~KovaPagingBar() override;

    /**
     * Makes @p page the model's current page and shows it. Emits nothing.
     *
     * A page that does not exist is taken as it is; the middle button is then blank and disabled.
     */
    void setPage(int page);

    /**
     * Sets the model's number of items and shows its current page anew. Emits nothing.
     *
     * A current page that no longer exists stays current; call reset() or last_page() to leave it.
     */
    void setItemCount(int count);

    /** Goes to page 1 and emits sigPageChanged(). */
    void reset();

    /** Hides or shows the refresh button. Hide it before the first footer text is set: see there.
     */
    void setRefreshButtonHidden(bool hidden);

    /**
     * Shows one label for each of @p infos, the first at the far right beside the refresh button.
     *
     * Labels that exist take the new text and, unless it is 0, the new width. Labels beyond the
     * last one are hidden and stay unused until the bar is deleted. A label gets its style when it
     * is made: "component.paging_bar_rightmost_label" for the first one if the refresh button is
     * hidden at that moment, otherwise "component.paging_bar_label".
     */
    void setFooterInfos(const std::vector<PagingFooterInfo> &infos);

    /** Shows @p info as the only label. */
    void setFooterInfo(const PagingFooterInfo &info);

    /** Shows @p text as the only label; a width that the label was given before stays. */
    void setFooterText(const QString &text);

Q_SIGNALS:
    /**
     * The user went to a page, or one of the slots was called. The model's nowPage() says to which;
     * it may be the same as before. Not emitted by setPage() and setItemCount().
     */
    void sigPageChanged();

    /** The refresh button was clicked. */
    void sigRefresh();

public Q_SLOTS:
    /**
     * Goes to the page whose number page button @p index shows, 0 to 4. A button that is blank or
     * disabled leads nowhere, and so does any other index: nothing is emitted.
     */
    void pageClick(int index);

    /** Goes forward by five pages, at most to the last. */
    void next_5_page();

    /** Goes back by five pages, at most to the first. */
    void prev_5_page();

    /** Goes to page 1. */
    void first_page();

    /** Goes to the last page. */
    void last_page();

protected:
    /** Turns the arrows round where the layout runs from right to left. */
    void changeEvent(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
