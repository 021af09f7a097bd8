// SPDX-License-Identifier: MIT

#pragma once

#include "kept-connection_p.h"

#include <QNetworkAccessManager>

// Keeps and sends no cookies. Asks for bodies that are not compressed, and unpacks none: Qt would
// unpack four megabytes to four gigabytes before anybody could stop it.
//
// Pages of HTTP and HTTPS come through HttpReply, without a thread: deleting the manager closes its
// connections at once, whatever their servers do.
//
// Requests to hosts below ".invalid" are answered with an error at once. Such names never resolve,
// but asking for them can take seconds and tells a name server about it.
class PlainAccessManager : public QNetworkAccessManager
{
    Q_OBJECT

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *outgoing) override;

private:
    KeptConnection m_kept;
};

// Whether @p reply, which has finished, is what was asked for: no error, no other address to ask
// instead, no compressed body.
[[nodiscard]] bool isAnswer(const QNetworkReply *reply);
