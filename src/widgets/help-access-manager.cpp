#include "help-access-manager_p.h"

#include <QNetworkRequest>

QNetworkReply *HelpAccessManager::createRequest(Operation operation, const QNetworkRequest &request,
                                                QIODevice *outgoing)
{
    QNetworkRequest sent = request;
    if (request.url().host().endsWith(QLatin1String(".invalid"))) {
        // A scheme that nothing answers: the error arrives through the event loop as any other.
        sent.setUrl(QUrl(QStringLiteral("invalid:/")));
    }
    return QNetworkAccessManager::createRequest(operation, sent, outgoing);
}
