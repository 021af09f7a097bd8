// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <QTcpServer>

#include <functional>

class QTcpSocket;

// An HTTP server on a free port of the loopback address, in the test's own event loop.
//
// Requests are answered with what was set for their path, and with 404 for other paths. Every
// connection carries one request.
class HttpServer : public QTcpServer
{
    Q_OBJECT

public:
    // Answers in its own way: writes to the socket, or keeps it, or closes it. What the client has
    // sent is the socket's property "head".
    using Handler = std::function<void(QTcpSocket *)>;

    HttpServer();

    // The address of the path "/", with the slash at the end.
    QString base() const;

    void answer(const QString &path, const QByteArray &body);
    void handle(const QString &path, const Handler &handler);

    // Holds answers back until release(), so that a test sees what runs at the same time.
    void hold();
    void release(int count = 1);

    // The targets of the requests, with their queries, in the order of their arrival.
    QStringList requests() const { return m_requests; }
    // Connections that are neither answered nor gone.
    int openRequests() const { return m_open; }
    int mostOpenRequests() const { return m_mostOpen; }

    static QByteArray response(const QByteArray &body, const QByteArray &status = "200 OK");
    // "<p>unpacked</p>" by gzip; it could as well be gigabytes of zeros.
    static QByteArray packed();

Q_SIGNALS:
    void requested(const QString &target);
    // A client has gone before it had its answer.
    void abandoned();

private:
    void accept();
    void read(QTcpSocket *socket);
    void reply(QTcpSocket *socket, const QString &path);

    QHash<QString, Handler> m_handlers;
    QList<std::function<void()>> m_held;
    bool m_isHolding = false;
    QStringList m_requests;
    int m_open = 0;
    int m_mostOpen = 0;
};
