// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/widgets/html-text-browser.h>

#include <QDialog>
#include <QUrl>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QTimer;

/**
 * An application-modal dialog with one page that is fetched over HTTP.
 *
 * When the page cannot be had within ten seconds fallbackOffline() is called, which a subclass
 * fills; HelpWindow is that for help articles. While a fetch runs a busy bar lies on the upper edge
 * of the page, and an empty page says in words that it is being loaded. If fallbackOffline() shows
 * nothing either, the dialog says that the page could not be loaded, with a button to try again.
 * The dialog has no size and no title of its own; give it both.
 *
 * Links to http, https and mailto addresses open in the desktop's programs; relative links are
 * followed in the page's search paths, and two buttons for Back and Forward appear with the first.
 * Their keys are Alt with the arrow keys, and Backspace. Ctrl+F opens a bar to find words in the
 * page: Return and F3 go to the next match, with Shift to the previous one. Escape closes the bar,
 * then the dialog.
 *
 * The look is that of the style keys "component.help_page", "component.help_document" (a style
 * sheet for the text), "component.help_bar", "component.help_notice" and "component.help_busy".
 * Without the first the page is a plain text browser within the margins of the desktop's style. The
 * words are strings whose keys begin with "help_"; English ones stand in for those that are
 * missing.
 *
 * The application's proxy settings hold for the fetch; cookies are neither kept nor sent. A
 * redirect is not followed: like a page that is sent compressed, though it was not asked for like
 * that, it counts as a network error.
 */
class KOVAKIT_EXPORT BrowserWindow : public QDialog
{
    Q_OBJECT

public:
    /** The longest page in bytes; a longer answer counts as a network error. */
    static constexpr qint64 maxPageBytes = HtmlTextBrowser::maxPageBytes;

    /** A hidden dialog that has fetched nothing; @p parent owns it. */
    explicit BrowserWindow(QWidget *parent);

    /**
     * Ends the fetches that still run, at once, whatever their servers do; nothing is shown and
     * nothing emitted for them.
     */
    ~BrowserWindow() override;

    /**
     * Sends the request for the present address and gives it ten seconds.
     *
     * An earlier request goes on; the one that ends last decides what is shown.
     */
    void query();

    /** Fetches the present address again. */
    void reload();

    /** Fetches @p url from now on. */
    void reload(const QUrl &url);

    /**
     * Shows what is shown when the page cannot be had: here nothing new.
     *
     * Called once for each fetch that ended with a network error, an HTTP error status, too long a
     * page or the time-out.
     */
    virtual void fallbackOffline();

Q_SIGNALS:
    /** Asks every request that runs to abort. Fired when the ten seconds are over. */
    void sigAbortRequest();

public Q_SLOTS:
    /** Shows the page of @p reply, or calls fallbackOffline() if it is an error. */
    void slotReceiveReply(QNetworkReply *reply);
    /** Emits sigAbortRequest(). */
    void slotQueryTimeout();

protected:
    /** Makes the network manager and the timer. */
    void init();

    /** Shows @p text in the page and tells assistive technology the page's title. */
    void showPage(const QString &text);

    /** The address of the page. */
    QUrl m_url;
    /** Sends the requests; without parent, deleted with the dialog. */
    QNetworkAccessManager *m_manager = nullptr;
    /** The time-out; without parent, deleted with the dialog. */
    QTimer *m_timer = nullptr;
    /** The page, a child of the dialog. */
    HtmlTextBrowser *m_browser = nullptr;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
