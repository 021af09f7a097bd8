// SPDX-License-Identifier: MIT

#include "kept-connection_p.h"

#include <QTcpSocket>

KeptConnection::KeptConnection() = default;

KeptConnection::~KeptConnection() = default;

std::unique_ptr<QTcpSocket> KeptConnection::take(const QString &key)
{
    if (!m_socket || m_key != key)
        return nullptr;
    m_socket->disconnect(this);
    return std::move(m_socket);
}

void KeptConnection::keep(const QString &key, std::unique_ptr<QTcpSocket> socket)
{
    m_key = key;
    m_socket = std::move(socket);
    // The server has closed it, or says something that nobody has asked for.
    const auto giveUp = [this] {
        m_socket->disconnect(this);
        m_socket.release()->deleteLater();
    };
    connect(m_socket.get(), &QAbstractSocket::disconnected, this, giveUp);
    connect(m_socket.get(), &QIODevice::readyRead, this, giveUp);
}
