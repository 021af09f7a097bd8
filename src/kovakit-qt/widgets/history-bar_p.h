// SPDX-License-Identifier: MIT

#pragma once

#include "page-bar_p.h"

class QTextBrowser;

// Back and Forward for the pages of a browser. Shows itself as soon as there is a page to go to.
class HistoryBar : public PageBar
{
    Q_OBJECT

public:
    // A bar for @p browser; @p parent owns it.
    HistoryBar(QTextBrowser *browser, QWidget *parent);

private:
    void showWhereToGo();

    QTextBrowser *const m_browser;
    KovaIconButton *const m_back;
    KovaIconButton *const m_forward;
};
