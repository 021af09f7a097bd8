// SPDX-License-Identifier: MIT

#include "log-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-paging-bar.h>
#include <kovakit-qt/widgets/kova-paging-model.h>
#include <kovakit-qt/widgets/kova-table-widget.h>

#include <QHeaderView>
#include <QLocale>
#include <QVBoxLayout>

namespace {

constexpr int entryCount = 100000;
constexpr int rowsPerPage = 50;

} // namespace

LogPage::LogPage()
    : m_log(makeLog(entryCount))
    , m_view(new KovaTableWidget(logColumns()))
    , m_model(new KovaPagingModel(rowsPerPage, this))
    , m_bar(new KovaPagingBar(m_model))
{
    auto *card = new Card(tr("100,000 entries, 50 on a page"),
                          tr("Click a title to sort, drag an edge to resize a column. With Tab on "
                             "the titles: Space sorts, Alt with Left or Right moves the edge."));
    m_view->setAccessibleName(tr("Log"));
    m_view->setMinimumHeight(kovaPx(240));
    QHeaderView *header = m_view->getHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(LogTime, Qt::DescendingOrder);
    connect(header, &QHeaderView::sectionClicked, this, &LogPage::sortBy);

    auto *list = new QVBoxLayout;
    list->setSpacing(0);
    list->addWidget(m_view, 1);
    list->addWidget(m_bar);
    card->addGrowing(list);
    addGrowing(card);

    connect(m_view->getTable(), &QTableWidget::itemSelectionChanged, this, [this] {
        m_selection = selectionOf(m_view->getTable());
        report(tr("%1 entries are chosen.").arg(m_selection.selected.size()));
    });
    connect(m_bar, &KovaPagingBar::sigPageChanged, this, [this] {
        loadPage();
        report(tr("Page %1 of %2.").arg(m_model->nowPage()).arg(m_model->pageCount()));
    });
    connect(m_bar, &KovaPagingBar::sigRefresh, this, [this] {
        loadPage();
        report(tr("Read page %1 again.").arg(m_model->nowPage()));
    });
    m_bar->setItemCount(entryCount);
    loadPage();
}

void LogPage::loadPage()
{
    const int first = qBound(0, m_model->startItem(), entryCount);
    showEntries(m_view->getTable(), m_log, first, m_model->rowLimit());
    restoreSelection(m_view->getTable(), m_selection);
    const QLocale locale;
    const int last = first + m_view->getTable()->rowCount();
    m_bar->setFooterInfo({tr("%1 - %2 of %3")
                              .arg(locale.toString(first + 1), locale.toString(last),
                                   locale.toString(m_model->itemCount())),
                          180});
}

void LogPage::sortBy(int column)
{
    if (column > LogEvent)
        return;
    sortLog(m_log, column, m_view->getHeader()->sortIndicatorOrder());
    // All entries are sorted, not those of the page alone.
    m_bar->reset();
    report(tr("Sorted by: %1.").arg(titleOf(m_view, column)));
}
