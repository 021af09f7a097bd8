#pragma once

#include <QNetworkAccessManager>

// Asks for bodies that are not compressed, and unpacks none: Qt would unpack four megabytes to four
// gigabytes before anybody could stop it.
//
// Requests to hosts below ".invalid" are answered with an error at once. Such names never resolve,
// but asking for them can take seconds and tells a name server about it.
class PlainAccessManager : public QNetworkAccessManager
{
    Q_OBJECT

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *outgoing) override;
};

// Whether the server has sent the body as it is, as it was asked to.
[[nodiscard]] bool isPlain(const QNetworkReply *reply);
