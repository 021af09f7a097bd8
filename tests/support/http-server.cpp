// SPDX-License-Identifier: MIT

#include "http-server.h"

#include <QPointer>
#include <QTcpSocket>

HttpServer::HttpServer()
{
    if (!listen(QHostAddress::LocalHost))
        qFatal("cannot listen on the loopback address");
    connect(this, &QTcpServer::newConnection, this, &HttpServer::accept);
}

QString HttpServer::base() const
{
    return QStringLiteral("http://127.0.0.1:%1/").arg(serverPort());
}

QByteArray HttpServer::response(const QByteArray &body, const QByteArray &status)
{
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: "
         + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QByteArray HttpServer::packed()
{
    return QByteArray::fromHex(
        "1f8b08000000000002ffb329b02bcd2b484cce4e4db1d12fb0030017d087ce0f000000");
}

void HttpServer::answer(const QString &path, const QByteArray &body)
{
    handle(path, [body](QTcpSocket *socket) {
        socket->write(response(body));
        socket->disconnectFromHost();
    });
}

void HttpServer::handle(const QString &path, const Handler &handler)
{
    m_handlers.insert(path, handler);
}

void HttpServer::hold()
{
    m_isHolding = true;
}

void HttpServer::release(int count)
{
    for (; count > 0 && !m_held.isEmpty(); --count)
        m_held.takeFirst()();
}

void HttpServer::accept()
{
    while (QTcpSocket *socket = nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void HttpServer::read(QTcpSocket *socket)
{
    const QByteArray head = socket->peek(65536);
    if (!head.contains("\r\n\r\n") || socket->property("isRead").toBool())
        return;
    socket->readAll();
    socket->setProperty("head", head);
    socket->setProperty("isRead", true);
    const QString target = QString::fromLatin1(head.split(' ').value(1));
    m_requests.append(target);
    m_mostOpen = qMax(m_mostOpen, ++m_open);
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        --m_open;
        if (!socket->property("isAnswered").toBool())
            Q_EMIT abandoned();
    });
    Q_EMIT requested(target);

    const QPointer<QTcpSocket> client(socket);
    const auto answerNow = [this, client, target] {
        if (client)
            reply(client, target.section(QLatin1Char('?'), 0, 0));
    };
    if (m_isHolding)
        m_held.append(answerNow);
    else
        answerNow();
}

void HttpServer::reply(QTcpSocket *socket, const QString &path)
{
    if (const Handler handler = m_handlers.value(path)) {
        handler(socket);
    } else {
        socket->write(response("not here", "404 Not Found"));
        socket->disconnectFromHost();
    }
    socket->setProperty("isAnswered", socket->state() != QTcpSocket::ConnectedState
                                          || socket->bytesToWrite() > 0);
}
