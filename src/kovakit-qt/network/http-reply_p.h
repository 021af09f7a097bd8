// SPDX-License-Identifier: MIT

#pragma once

#include "http-response_p.h"

#include <QAbstractSocket>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QSslError>

#include <memory>

class KeptConnection;
class QNetworkAccessManager;
class QTcpSocket;

// One request of HTTP/1.1 or HTTPS and what is answered, over a socket of this thread.
//
// Qt's own reply reads what is no content in a thread of its own, without bounds and without
// looking up: a server that sends faster than that is read keeps the thread for itself, and whoever
// deletes the access manager waits five seconds for it. Here abort() and deleting close the
// connection at once and leave nothing behind, and HttpResponse counts.
//
// Content waits in the reply up to readBufferSize(), the rest with the server. Redirects are not
// followed, cookies neither kept nor sent; an HTTP error ends the reply without its content.
class HttpReply : public QNetworkReply
{
    Q_OBJECT

public:
    // Sends @p request from the event loop, over the connection in @p kept if that fits, and leaves
    // its own there. @p manager owns the reply.
    HttpReply(const QNetworkRequest &request, QNetworkAccessManager *manager, KeptConnection *kept);
    ~HttpReply() override;

    // Emits finished() before it returns, unless the reply has finished.
    void abort() override;
    void ignoreSslErrors() override;
    [[nodiscard]] qint64 bytesAvailable() const override;
    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;

private:
    void start();
    [[nodiscard]] bool chooseProxy();
    void connectSocket();
    [[nodiscard]] std::unique_ptr<QTcpSocket> newSocket();
    void send();
    void readLater();
    void read();
    void take(const QByteArray &bytes);
    void takeHead();
    void checkPeer(const QList<QSslError> &errors);
    void handleClosed();
    void noteSocketError(QAbstractSocket::SocketError error);
    void drop(std::unique_ptr<QTcpSocket> socket);
    void finish(NetworkError code, const QString &text);
    [[nodiscard]] bool isFull() const;
    [[nodiscard]] bool isEncrypted() const;
    [[nodiscard]] QByteArray head() const;
    // Requests of which this is the same may use one connection after the other.
    [[nodiscard]] QString connectionKey() const;

    QNetworkAccessManager *const m_manager;
    KeptConnection *const m_kept;
    // One that asks for the whole address itself, or one that Qt's socket goes through.
    QNetworkProxy m_askedProxy{QNetworkProxy::NoProxy};
    QNetworkProxy m_proxy{QNetworkProxy::NoProxy};
    std::unique_ptr<QTcpSocket> m_socket;
    QAbstractSocket::SocketError m_socketError = QAbstractSocket::UnknownSocketError;
    bool m_isInSocketSignal = false;
    bool m_isReused = false;
    bool m_ignoresSslErrors = false;
    bool m_isReadingLater = false;
    HttpResponse m_response;
    bool m_hasTakenHead = false;
    QByteArray m_content;
    int m_contentAt = 0;
};
