// SPDX-License-Identifier: MIT

#include "instance-message_p.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QThread>
#include <QtEndian>

#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int lengthBytes = sizeof(quint32);
constexpr int longestStart = 1000;
constexpr int pauseBetweenTries = 50;

int remaining(const QDeadlineTimer &deadline)
{
    return int(deadline.remainingTime());
}

bool connectTo(QLocalSocket &socket, const QString &path, const QDeadlineTimer &deadline)
{
    const QDeadlineTimer start(longestStart);
    for (;;) {
        socket.connectToServer(path);
        if (socket.waitForConnected(remaining(deadline)))
            return true;
        if (start.hasExpired() || deadline.hasExpired())
            return false;
        QThread::msleep(pauseBetweenTries);
    }
}

} // namespace

InstanceMessageReader::State InstanceMessageReader::add(const QByteArray &bytes)
{
    m_bytes += bytes;
    if (m_bytes.size() < lengthBytes)
        return Partial;
    const auto length = qFromBigEndian<quint32>(m_bytes.constData());
    if (length > maxInstanceMessage)
        return TooLong;
    return m_bytes.size() - lengthBytes < int(length) ? Partial : Complete;
}

QString InstanceMessageReader::text() const
{
    return QString::fromUtf8(
        m_bytes.mid(lengthBytes, int(qFromBigEndian<quint32>(m_bytes.constData()))));
}

bool isOwnProcess(const QLocalSocket &socket)
{
    ucred peer = {};
    socklen_t size = sizeof(peer);
    return ::getsockopt(int(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == ::geteuid();
}

bool sendToInstance(const QString &path, const QString &text, int timeout)
{
    const QByteArray content = text.toUtf8();
    if (quint32(content.size()) > maxInstanceMessage)
        return false;
    const QDeadlineTimer deadline(timeout);
    QLocalSocket socket;
    if (!connectTo(socket, path, deadline) || !isOwnProcess(socket))
        return false;

    QByteArray length(lengthBytes, Qt::Uninitialized);
    qToBigEndian(quint32(content.size()), length.data());
    socket.write(length + content);
    while (socket.bytesToWrite() > 0) {
        if (!socket.waitForBytesWritten(remaining(deadline)))
            return false;
    }
    const QByteArray expected(instanceAcknowledgement);
    while (socket.bytesAvailable() < expected.size()) {
        if (!socket.waitForReadyRead(remaining(deadline)))
            return false;
    }
    return socket.read(expected.size()) == expected;
}
