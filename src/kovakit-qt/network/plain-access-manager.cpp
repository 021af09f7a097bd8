// SPDX-License-Identifier: MIT

#include "plain-access-manager_p.h"

#include "http-reply_p.h"

#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

// Whether the server has sent the body as it is, as it was asked to.
bool isPlain(const QNetworkReply *reply)
{
    const QByteArray encoding = reply->rawHeader("Content-Encoding").trimmed().toLower();
    return encoding.isEmpty() || encoding == "identity";
}

} // namespace

QNetworkReply *PlainAccessManager::createRequest(Operation operation,
                                                 const QNetworkRequest &request,
                                                 QIODevice *outgoing)
{
    QNetworkRequest sent = request;
    if (request.url().host().endsWith(QLatin1String(".invalid"))) {
        // A scheme that nothing answers: the error arrives through the event loop as any other.
        sent.setUrl(QUrl(QStringLiteral("invalid:/")));
    }
    sent.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    sent.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // In place of Qt's own offer to unpack.
    sent.setRawHeader("Accept-Encoding", "identity");
    const QString scheme = sent.url().scheme();
    if (operation == GetOperation
        && (scheme == QLatin1String("http") || scheme == QLatin1String("https")))
        return new HttpReply(sent, this, &m_kept);
    return QNetworkAccessManager::createRequest(operation, sent, outgoing);
}

bool isAnswer(const QNetworkReply *reply)
{
    return reply->error() == QNetworkReply::NoError && isPlain(reply)
        && !reply->attribute(QNetworkRequest::RedirectionTargetAttribute).isValid();
}
