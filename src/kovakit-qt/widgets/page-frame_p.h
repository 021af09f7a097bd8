// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class FindBar;
class HtmlTextBrowser;
class PageNotice;
class QKeyEvent;
class QProgressBar;
class QVBoxLayout;
class QWidget;

// What a help window shows round its page: the busy bar, what is said of the page, the bars for the
// history and for finding words, and the keys and mouse buttons of all of them.
//
// The bars join the window's layout when they are first needed.
class PageFrame : public QObject
{
    Q_OBJECT

public:
    // For @p window with the page @p browser; gives the window its layout.
    PageFrame(QWidget *window, HtmlTextBrowser *browser);

    // Whether a page is being fetched.
    void setLoading(bool loading);

    // Between the two a page may arrive in place of one that could not be fetched. If none has, or
    // an empty one, the window says so, unless another one is being fetched.
    void beginFallback();
    void endFallback();

Q_SIGNALS:
    // Emitted when the user wants the page to be fetched again.
    void retried();

protected:
    // Follows the size of the page, and takes what climbs to the window and is for the bars.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void dress();
    void place();
    void tellState();
    void showNotice(const QString &words, bool canRetry);
    void leaveNotice();
    void hideNotice();
    void retry();
    void showHistory();
    FindBar *findBar();
    bool takeKey(const QKeyEvent *event);
    bool takeReturn(bool backward);
    bool takeStep(int step);

    enum class State { Shown, Loading, Failed };

    QWidget *const m_window;
    HtmlTextBrowser *const m_browser;
    QVBoxLayout *const m_layout;
    QProgressBar *const m_busy;
    PageNotice *const m_notice;
    QWidget *m_historyBar = nullptr;
    FindBar *m_findBar = nullptr;
    State m_state = State::Shown;
    bool m_hasNewPage = false;
};
