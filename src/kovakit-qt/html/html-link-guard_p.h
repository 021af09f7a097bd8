// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QUrl>

class QTextBrowser;

// Tells which links of a browser it must not hand to the desktop, and tells the user of them.
//
// A browser that opens external links leaves every address to the desktop, which starts whatever
// program is registered for its scheme. A page may only lead to the web or to a mail.
class HtmlLinkGuard : public QObject
{
    Q_OBJECT

public:
    // For @p browser, which must outlive it.
    explicit HtmlLinkGuard(QTextBrowser *browser);

    // Whether the link to @p href, as the page has it, is not to be followed.
    [[nodiscard]] bool isRefused(const QString &href) const;

    // Where the link leads that has the keyboard; empty if none has.
    [[nodiscard]] QString focusedLink() const;

    // Says at @p position of the screen that the link is not opened.
    void explain(const QPoint &position) const;

    // The same below the link that has the keyboard.
    void explainFocusedLink() const;

    // Describes the browser to assistive technology as being on such a link, or no longer.
    void describe();

private:
    [[nodiscard]] bool isRefusedAddress(const QUrl &address) const;

    QTextBrowser *const m_browser;
    const QString m_words;
    QString m_ownDescription;
    bool m_isDescribing = false;
};
