// SPDX-License-Identifier: MIT

#include "page-frame_p.h"

#include "find-bar_p.h"
#include "history-bar_p.h"
#include "page-notice_p.h"

#include "kovakit-qt/style/optional-style_p.h"
#include "kovakit-qt/utils/component-strings_p.h"
#include "kovakit-qt/utils/keys_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/html-text-browser.h>

#include <QAction>
#include <QMouseEvent>
#include <QProgressBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr double designBusyHeight = 3;

QString loadingWords()
{
    return componentString("help_loading", "Loading the page…");
}

} // namespace

PageFrame::PageFrame(QWidget *window, HtmlTextBrowser *browser)
    : m_window(window)
    , m_browser(browser)
    , m_layout(new QVBoxLayout(window))
    , m_busy(new QProgressBar(browser))
    , m_notice(new PageNotice(window))
{
    dress();
    m_layout->addWidget(browser);
    m_busy->setObjectName(QStringLiteral("busyBar"));
    m_busy->setAccessibleName(loadingWords());
    m_busy->setRange(0, 0);
    m_busy->setTextVisible(false);
    m_busy->setFixedHeight(qMax(1, kovaPx(designBusyHeight)));
    m_busy->setStyleSheet(getStyleSheet("component.help_busy", false));
    m_busy->hide();

    const auto offer = [window](const QString &words) {
        auto *action = new QAction(words, window);
        window->addAction(action);
        return action;
    };
    connect(offer(componentString("help_find", "Find in page")), &QAction::triggered, this,
            [this] { findBar()->open(); });
    connect(offer(componentString("help_find_close", "Close")), &QAction::triggered, window,
            &QWidget::close);

    window->installEventFilter(this);
    browser->installEventFilter(this);
    connect(m_notice, &PageNotice::retried, this, &PageFrame::retry);
    connect(browser, &QTextBrowser::historyChanged, this, &PageFrame::showHistory);
    connect(browser, &QTextBrowser::sourceChanged, this, &PageFrame::tellState);
    connect(browser, &QTextEdit::textChanged, this, [this] {
        m_hasNewPage = true;
        tellState();
    });
}

// A theme that says nothing of help pages has them look like any other text browser.
void PageFrame::dress()
{
    const QString look = optionalStyleSheet("component.help_page");
    if (look.isEmpty())
        return;
    m_browser->setStyleSheet(look);
    m_browser->document()->setDefaultStyleSheet(optionalStyleSheet("component.help_document"));
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
}

void PageFrame::setLoading(bool loading)
{
    m_state = loading ? State::Loading : State::Shown;
    m_busy->setVisible(loading);
    place();
    tellState();
}

void PageFrame::beginFallback()
{
    m_hasNewPage = false;
}

void PageFrame::endFallback()
{
    const bool isMissing = !m_hasNewPage || m_browser->document()->isEmpty();
    if (!isMissing || m_state == State::Loading)
        return;
    m_state = State::Failed;
    tellState();
}

void PageFrame::tellState()
{
    const bool isEmpty = m_browser->document()->isEmpty();
    const bool isLinked = !m_browser->source().path().isEmpty();
    if (m_state == State::Loading && isEmpty)
        showNotice(loadingWords(), false);
    else if (m_state == State::Failed || (m_state == State::Shown && isEmpty && isLinked))
        showNotice(componentString("help_failed", "The page could not be loaded."), true);
    else
        hideNotice();
}

void PageFrame::showNotice(const QString &words, bool canRetry)
{
    const bool isStrip = !m_browser->document()->isEmpty();
    if (!canRetry)
        leaveNotice();
    m_notice->setStrip(isStrip);
    m_notice->say(words, canRetry);
    if (isStrip)
        m_layout->insertWidget(m_layout->indexOf(m_browser) + 1, m_notice);
    else
        m_layout->removeWidget(m_notice);
    m_notice->show();
    place();
    if (canRetry && !isStrip && m_window->focusWidget() == m_browser)
        m_notice->focusRetry();
}

void PageFrame::leaveNotice()
{
    const QWidget *focus = m_window->focusWidget();
    if (focus && m_notice->isAncestorOf(focus))
        m_browser->setFocus();
}

void PageFrame::hideNotice()
{
    leaveNotice();
    m_notice->hide();
    m_layout->removeWidget(m_notice);
}

void PageFrame::retry()
{
    if (m_state == State::Failed)
        Q_EMIT retried();
    else
        m_browser->reload();
}

void PageFrame::place()
{
    m_busy->setGeometry(0, 0, m_browser->width(), m_busy->height());
    m_busy->raise();
    if (m_layout->indexOf(m_notice) >= 0)
        return;
    m_notice->setGeometry(m_browser->geometry());
    m_notice->raise();
}

void PageFrame::showHistory()
{
    tellState();
    if (m_historyBar || (!m_browser->isBackwardAvailable() && !m_browser->isForwardAvailable()))
        return;
    m_historyBar = new HistoryBar(m_browser, m_window);
    m_layout->insertWidget(0, m_historyBar);
}

FindBar *PageFrame::findBar()
{
    if (!m_findBar) {
        m_findBar = new FindBar(m_browser, m_window);
        m_layout->addWidget(m_findBar);
    }
    return m_findBar;
}

bool PageFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_browser && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        place();
    if (watched != m_window)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        return takeKey(static_cast<QKeyEvent *>(event));
    if (event->type() == QEvent::MouseButtonRelease)
        return takeStep(pageStep(static_cast<QMouseEvent *>(event)->button()));
    return QObject::eventFilter(watched, event);
}

bool PageFrame::takeKey(const QKeyEvent *event)
{
    const bool isShifted = event->modifiers().testFlag(Qt::ShiftModifier);
    const bool isF3 = event->key() == Qt::Key_F3;
    if (event->matches(QKeySequence::Find))
        findBar()->open();
    else if (event->matches(QKeySequence::FindPrevious) || (isF3 && isShifted))
        findBar()->findPrevious();
    else if (event->matches(QKeySequence::FindNext) || isF3)
        findBar()->findNext();
    else if (event->key() == Qt::Key_Escape && m_findBar && m_findBar->isVisible())
        m_findBar->close();
    else if (isReturn(event))
        return takeReturn(isShifted);
    else
        return takeStep(pageStep(event, m_window->layoutDirection()));
    return true;
}

bool PageFrame::takeReturn(bool backward)
{
    QWidget *focus = m_window->focusWidget();
    if (auto *button = qobject_cast<QToolButton *>(focus)) {
        button->click();
        return true;
    }
    if (!m_findBar || !m_findBar->isAncestorOf(focus))
        return false;
    if (backward)
        m_findBar->findPrevious();
    else
        m_findBar->findNext();
    return true;
}

bool PageFrame::takeStep(int step)
{
    if (step < 0)
        m_browser->backward();
    else if (step > 0)
        m_browser->forward();
    return step != 0;
}
