// SPDX-License-Identifier: MIT

#include "help-window.h"

#include "kovakit-qt/utils/safe-file_p.h"

#include <kovakit-qt/utils/util.h>

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

class HelpWindow::Private
{
public:
    QString lang;
    QString offlineHelpDir;
    QString link;
    QString section;
    QString version;
};

HelpWindow::HelpWindow(const HelpContext &context, QWidget *parent)
    : BrowserWindow(parent)
    , d(new Private{helpLanguage(context.lang), context.offlineHelpDir, context.link,
                    context.section, context.version})
{
    retrieveHelpContent();
}

HelpWindow::~HelpWindow() = default;

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
    query.addQueryItem(QStringLiteral("section"), d->section);
    query.addQueryItem(QStringLiteral("lang"), d->lang);
    query.addQueryItem(QStringLiteral("link"), d->link);
    query.addQueryItem(QStringLiteral("unique"), QStringLiteral("kovaline_utility_help"));
    query.addQueryItem(QStringLiteral("version"), d->version);
    QUrl url = knowledgeBaseAddress();
    url.setQuery(query);
    reload(url);
}

void HelpWindow::fallbackOffline()
{
    const QString searchDir = d->offlineHelpDir + QLatin1Char('/') + d->lang;
    m_browser->setSearchPaths({searchDir});
    QFile file;
    if (!openRegularFile(file, searchDir + QLatin1Char('/') + d->link)
        || file.size() > maxPageBytes)
        return;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    showPage(stream.readAll());
}
