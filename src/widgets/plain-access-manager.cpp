#include "plain-access-manager_p.h"

#include <QNetworkReply>
#include <QNetworkRequest>

QNetworkReply *PlainAccessManager::createRequest(Operation operation,
                                                 const QNetworkRequest &request,
                                                 QIODevice *outgoing)
{
    QNetworkRequest sent = request;
    if (request.url().host().endsWith(QLatin1String(".invalid"))) {
        // A scheme that nothing answers: the error arrives through the event loop as any other.
        sent.setUrl(QUrl(QStringLiteral("invalid:/")));
    }
    // In place of Qt's own offer to unpack.
    sent.setRawHeader("Accept-Encoding", "identity");
    return QNetworkAccessManager::createRequest(operation, sent, outgoing);
}

bool isPlain(const QNetworkReply *reply)
{
    const QByteArray encoding = reply->rawHeader("Content-Encoding").trimmed().toLower();
    return encoding.isEmpty() || encoding == "identity";
}
