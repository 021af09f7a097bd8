// SPDX-License-Identifier: MIT

#include "history-bar_p.h"

#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/widgets/kova-icon-button.h>

#include <QHBoxLayout>
#include <QTextBrowser>

HistoryBar::HistoryBar(QTextBrowser *browser, QWidget *parent)
    : PageBar("historyBar", parent)
    , m_browser(browser)
    , m_back(addButton(componentString("help_back", "Back"), "bt_pagebar_back", "bt_pagebar_next"))
    , m_forward(addButton(componentString("help_forward", "Forward"), "bt_pagebar_next",
                          "bt_pagebar_back"))
{
    row()->addStretch();
    connect(m_back, &KovaIconButton::clicked, browser, &QTextBrowser::backward);
    connect(m_forward, &KovaIconButton::clicked, browser, &QTextBrowser::forward);
    connect(browser, &QTextBrowser::historyChanged, this, &HistoryBar::showWhereToGo);
    showWhereToGo();
}

void HistoryBar::showWhereToGo()
{
    const bool back = m_browser->isBackwardAvailable();
    const bool forward = m_browser->isForwardAvailable();
    // Left to itself the focus would walk on from a button that is disabled.
    if ((m_back->hasFocus() && !back) || (m_forward->hasFocus() && !forward))
        m_browser->setFocus();
    m_back->setEnabled(back);
    m_forward->setEnabled(forward);
    setVisible(back || forward);
}
