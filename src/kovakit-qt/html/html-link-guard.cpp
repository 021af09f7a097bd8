// SPDX-License-Identifier: MIT

#include "html-link-guard_p.h"

#include "kovakit-qt/utils/component-strings_p.h"

#include <QTextBrowser>
#include <QTextCursor>
#include <QToolTip>

#include <utility>

namespace {

bool isInsideProgram(const QUrl &address)
{
    const QString scheme = address.scheme();
    return address.isRelative() || scheme == QLatin1String("file")
        || scheme == QLatin1String("qrc");
}

bool isForDesktop(const QUrl &address)
{
    const QString scheme = address.scheme();
    return scheme == QLatin1String("https") || scheme == QLatin1String("http")
        || scheme == QLatin1String("mailto");
}

} // namespace

HtmlLinkGuard::HtmlLinkGuard(QTextBrowser *browser)
    : m_browser(browser)
    , m_words(componentString("help_link_refused", "This link is not opened."))
{
    connect(browser, &QTextBrowser::cursorPositionChanged, this, &HtmlLinkGuard::describe);
    connect(browser, &QTextBrowser::selectionChanged, this, &HtmlLinkGuard::describe);
    connect(browser, &QTextBrowser::textChanged, this, &HtmlLinkGuard::describe);
    // The hand of a link promises that a click does something.
    connect(browser, QOverload<const QUrl &>::of(&QTextBrowser::highlighted), this,
            [this](const QUrl &address) {
                if (!address.isEmpty() && isRefusedAddress(address))
                    m_browser->viewport()->setCursor(Qt::ArrowCursor);
            });
}

bool HtmlLinkGuard::isRefused(const QString &href) const
{
    const QUrl link(href);
    return !href.isEmpty()
        && isRefusedAddress(link.isValid() ? m_browser->source().resolved(link) : link);
}

bool HtmlLinkGuard::isRefusedAddress(const QUrl &address) const
{
    // Without these two the host is told of links and decides itself.
    if (!m_browser->openLinks() || !m_browser->openExternalLinks())
        return false;
    return !address.isValid() || (!isInsideProgram(address) && !isForDesktop(address));
}

QString HtmlLinkGuard::focusedLink() const
{
    QTextCursor cursor = m_browser->textCursor();
    if (!cursor.hasSelection())
        return QString();
    cursor.setPosition(cursor.selectionStart());
    cursor.movePosition(QTextCursor::NextCharacter);
    return cursor.charFormat().anchorHref();
}

void HtmlLinkGuard::explain(const QPoint &position) const
{
    QToolTip::showText(position, m_words, m_browser->viewport());
}

void HtmlLinkGuard::explainFocusedLink() const
{
    QTextCursor start = m_browser->textCursor();
    start.setPosition(start.selectionStart());
    explain(m_browser->viewport()->mapToGlobal(m_browser->cursorRect(start).bottomLeft()));
}

void HtmlLinkGuard::describe()
{
    const bool refused = isRefused(focusedLink());
    if (refused == m_isDescribing)
        return;
    m_isDescribing = refused;
    if (refused) {
        m_ownDescription = m_browser->accessibleDescription();
        m_browser->setAccessibleDescription(m_words);
    } else if (m_browser->accessibleDescription() == m_words) {
        m_browser->setAccessibleDescription(std::exchange(m_ownDescription, QString()));
    }
}
