// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"
#include "log-entries.h"

class KovaTableWidget;

// The same log in one table of all its entries, whose columns can be hidden.
class LongTablePage : public GalleryPage
{
    Q_OBJECT

public:
    LongTablePage();

private:
    QWidget *makeSwitch(int column, const QString &text);

    std::vector<LogEntry> m_log;
    KovaTableWidget *m_view;
};
