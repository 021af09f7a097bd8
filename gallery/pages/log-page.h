// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"
#include "log-entries.h"

class KovaPagingBar;
class KovaPagingModel;
class KovaTableWidget;

// A log of 100,000 entries, page by page.
class LogPage : public GalleryPage
{
    Q_OBJECT

public:
    LogPage();

private:
    void loadPage();
    void sortBy(int column);

    std::vector<LogEntry> m_log;
    LogSelection m_selection;
    KovaTableWidget *m_view;
    KovaPagingModel *m_model;
    KovaPagingBar *m_bar;
};
