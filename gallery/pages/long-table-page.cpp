// SPDX-License-Identifier: MIT

#include "long-table-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-check-box.h>
#include <kovakit-qt/widgets/kova-table-widget.h>

#include <QHeaderView>

namespace {

constexpr int entryCount = 100000;

} // namespace

LongTablePage::LongTablePage()
    : m_log(makeLog(entryCount))
    , m_view(new KovaTableWidget(logColumns()))
{
    auto *card =
        new Card(tr("100,000 entries at once"), tr("Every entry is a row. Click a title to sort."));
    card->addRow({makeRowLabel(tr("Columns:")), makeSwitch(LogTime, tr("Time")),
                  makeSwitch(LogLevel, tr("Level")), makeSwitch(LogUser, tr("User"))});
    m_view->setAccessibleName(tr("Log"));
    m_view->setMinimumHeight(kovaPx(240));
    QHeaderView *header = m_view->getHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(LogTime, Qt::DescendingOrder);
    connect(header, &QHeaderView::sectionClicked, this, [this, header](int column) {
        if (column > LogEvent)
            return;
        const LogSelection selection = selectionOf(m_view->getTable());
        sortLog(m_log, column, header->sortIndicatorOrder());
        showEntries(m_view->getTable(), m_log, 0, entryCount);
        restoreSelection(m_view->getTable(), selection);
        report(tr("Sorted by: %1.").arg(titleOf(m_view, column)));
    });
    card->addGrowing(m_view);
    addGrowing(card);
    showEntries(m_view->getTable(), m_log, 0, entryCount);
}

QWidget *LongTablePage::makeSwitch(int column, const QString &text)
{
    auto *box = new KovaCheckBox(text, nullptr);
    box->setChecked(true);
    connect(box, &QCheckBox::toggled, this,
            [this, column](bool shown) { m_view->getTable()->setColumnHidden(column, !shown); });
    return box;
}
