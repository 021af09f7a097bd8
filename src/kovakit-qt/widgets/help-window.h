// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/widgets/browser-window.h>
#include <kovakit-qt/widgets/help-context.h>

/**
 * Context help: the article of the knowledge base, or the page of the offline help in its place.
 *
 * The fetch starts in the constructor; the caller gives the window a title and a size and shows it.
 * The offline page is "offlineHelpDir/language/link" and may show pictures and pages from the
 * folder of its language.
 *
 * Both sides name some languages otherwise than the user's code: deu is ger, esn is spn, fra is
 * fre, and dan, sve, hun, trk, nor, ptg, ptb and tha are served in enu.
 */
class KOVAKIT_EXPORT HelpWindow : public BrowserWindow
{
    Q_OBJECT

public:
    /** A hidden window that already fetches the article of @p context; @p parent owns it. */
    HelpWindow(const HelpContext &context, QWidget *parent);

    ~HelpWindow() override;

    /**
     * Sets where the knowledge base is, for the windows made after it: "help.example.com", also
     * with a port, or "http://127.0.0.1:8080" where it is not to be reached by HTTPS.
     *
     * The path "/cgi/knowledgebase/" and the query are fixed. Until this is called the host is one
     * that does not exist: every window shows its offline page at once and nobody is asked. An
     * address without a host logs a warning and changes nothing.
     */
    static void setKnowledgeBaseHost(const QString &host);

    /** The address that windows ask, without the query. */
    [[nodiscard]] static QUrl knowledgeBaseAddress();

    /** Fetches the article again. */
    void retrieveHelpContent();

    /**
     * Shows the offline page.
     *
     * A page that is missing, no regular file or longer than BrowserWindow::maxPageBytes leaves the
     * window as it is, without a message.
     */
    void fallbackOffline() override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
