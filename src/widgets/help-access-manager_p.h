#pragma once

#include <QNetworkAccessManager>

// Answers requests to hosts below ".invalid" with an error at once. Such names never resolve, but
// asking for them can take seconds and tells a name server about it.
class HelpAccessManager : public QNetworkAccessManager
{
    Q_OBJECT

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *outgoing) override;
};
