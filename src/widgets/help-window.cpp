#include "help-window.h"

#include <kovakit-qt/utils/safe-file_p.h>
#include <kovakit-qt/utils/util.h>
#include <kovakit-qt/widgets/html-text-browser.h>

#include <QFile>
#include <QHash>
#include <QTextStream>
#include <QUrlQuery>

namespace {

QUrl &serverAddress()
{
    static QUrl address(QStringLiteral("https://help.invalid/cgi/knowledgebase/"));
    return address;
}

QString helpLanguage(const QString &code)
{
    static const QHash<QString, QString> helpCodes = {
        {QStringLiteral("deu"), QStringLiteral("ger")},
        {QStringLiteral("esn"), QStringLiteral("spn")},
        {QStringLiteral("fra"), QStringLiteral("fre")},
        {QStringLiteral("dan"), QStringLiteral("enu")},
        {QStringLiteral("sve"), QStringLiteral("enu")},
        {QStringLiteral("hun"), QStringLiteral("enu")},
        {QStringLiteral("trk"), QStringLiteral("enu")},
        {QStringLiteral("nor"), QStringLiteral("enu")},
        {QStringLiteral("ptg"), QStringLiteral("enu")},
        {QStringLiteral("ptb"), QStringLiteral("enu")},
        {QStringLiteral("tha"), QStringLiteral("enu")},
    };
    return helpCodes.value(code, code);
}

} // namespace

HelpWindow::HelpWindow(const HelpContext &context, QWidget *parent)
    : BrowserWindow(parent)
    , m_lang(helpLanguage(context.lang))
    , m_offlineHelpDir(context.offlineHelpDir)
    , m_link(context.link)
    , m_section(context.section)
    , m_version(context.version)
{
    retrieveHelpContent();
}

void HelpWindow::setKnowledgeBaseHost(const QString &host)
{
    const bool hasScheme = host.contains(QLatin1String("://"));
    QUrl address(hasScheme ? host : QLatin1String("https://") + host);
    const bool isWeb =
        address.scheme() == QLatin1String("https") || address.scheme() == QLatin1String("http");
    if (!address.isValid() || !isWeb || address.host().isEmpty()) {
        qCWarning(debug_message) << "Invalid knowledge base host" << host;
        return;
    }
    address.setPath(QStringLiteral("/cgi/knowledgebase/"));
    address.setQuery(QString());
    address.setFragment(QString());
    serverAddress() = address;
}

QUrl HelpWindow::knowledgeBaseAddress()
{
    return serverAddress();
}

void HelpWindow::retrieveHelpContent()
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("action"), QStringLiteral("findHelpFile"));
    query.addQueryItem(QStringLiteral("section"), m_section);
    query.addQueryItem(QStringLiteral("lang"), m_lang);
    query.addQueryItem(QStringLiteral("link"), m_link);
    query.addQueryItem(QStringLiteral("unique"), QStringLiteral("kovaline_utility_help"));
    query.addQueryItem(QStringLiteral("version"), m_version);
    QUrl url = knowledgeBaseAddress();
    url.setQuery(query);
    reload(url);
}

void HelpWindow::fallbackOffline()
{
    m_searchDir = m_offlineHelpDir + QLatin1Char('/') + m_lang;
    m_browser->setSearchPaths({m_searchDir});
    QFile file;
    if (!openRegularFile(file, m_searchDir + QLatin1Char('/') + m_link)
        || file.size() > maxPageBytes)
        return;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    showPage(stream.readAll());
}
