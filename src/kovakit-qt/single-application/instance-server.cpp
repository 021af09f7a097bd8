// SPDX-License-Identifier: MIT

#include "instance-server_p.h"

#include "instance-message_p.h"
#include "instance-place_p.h"

#include <kovakit-qt/utils/util.h>

#include <QLocalSocket>
#include <QTimer>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

// One connection. Ends its own life, later, when it has served or failed.
class InstanceCaller : public QObject
{
public:
    // @p receive takes the whole message.
    InstanceCaller(QLocalSocket *socket, std::function<void(const QString &)> receive,
                   QObject *parent);

    void hangUp();

private:
    void read();
    void endCall();

    QLocalSocket *const m_socket;
    const std::function<void(const QString &)> m_receive;
    InstanceMessageReader m_reader;
    bool m_isServed = false;
};

InstanceCaller::InstanceCaller(QLocalSocket *socket, std::function<void(const QString &)> receive,
                               QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_receive(std::move(receive))
{
    socket->setParent(this);
    connect(socket, &QLocalSocket::readyRead, this, &InstanceCaller::read);
    connect(socket, &QLocalSocket::disconnected, this, &QObject::deleteLater);
    QTimer::singleShot(InstanceServer::maxCallTime, this, &InstanceCaller::endCall);
    QMetaObject::invokeMethod(this, &InstanceCaller::read, Qt::QueuedConnection);
}

void InstanceCaller::hangUp()
{
    m_socket->disconnect(this);
    m_socket->abort();
    deleteLater();
}

void InstanceCaller::read()
{
    if (m_isServed)
        return;
    const InstanceMessageReader::State state = m_reader.add(m_socket->readAll());
    if (state == InstanceMessageReader::Partial)
        return;
    m_isServed = true;
    if (state == InstanceMessageReader::TooLong) {
        hangUp();
        return;
    }
    m_socket->write(instanceAcknowledgement);
    m_socket->flush();
    m_socket->disconnectFromServer();
    m_receive(m_reader.text());
}

// What has come while the program was busy counts still.
void InstanceCaller::endCall()
{
    if (!m_isServed && m_socket->waitForReadyRead(0))
        read();
    if (!m_isServed)
        hangUp();
}

InstanceServer::InstanceServer(const QString &place, QObject *parent)
    : QLocalServer(parent)
    , m_place(place)
{
    setSocketOptions(UserAccessOption);
}

// Removes the socket while the lock is held: afterwards it may be the next first instance's.
InstanceServer::~InstanceServer()
{
    close();
}

QString InstanceServer::socketPath() const
{
    return m_place + QLatin1String(instanceSocketExtension);
}

bool InstanceServer::isTaken()
{
    if (m_isFirst)
        return false;
    const Lock result = lock();
    if (result == HeldByAnother)
        return true;
    m_isFirst = true;
    if (result == Impossible)
        qCWarning(debug_message) << "Cannot lock for a single instance" << m_place;
    else if (!listen(socketPath()))
        qCWarning(debug_message) << "Cannot listen for other instances" << socketPath();
    return false;
}

InstanceServer::Lock InstanceServer::lock()
{
    if (m_place.isEmpty())
        return Impossible;
    const QByteArray path = QFile::encodeName(m_place) + instanceLockExtension;
    const int descriptor =
        ::open(path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return Impossible;
    m_lockFile.open(descriptor, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle);

    struct stat status = {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
        && status.st_uid == ::geteuid()) {
        // The sticky bit keeps it from those who clean the folder of old files.
        ::fchmod(descriptor, S_ISVTX | S_IRUSR | S_IWUSR);
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
            return Held;
        const bool isHeld = errno == EWOULDBLOCK;
        m_lockFile.close();
        return isHeld ? HeldByAnother : Impossible;
    }
    m_lockFile.close();
    return Impossible;
}

void InstanceServer::admitCallers()
{
    while (QLocalSocket *socket = nextPendingConnection()) {
        if (!isOwnProcess(*socket)) {
            delete socket;
            continue;
        }
        // Apart from the caller's own signals: whoever receives it may run an event loop.
        const auto receive = [this](const QString &text) {
            QMetaObject::invokeMethod(
                this, [this, text] { Q_EMIT messageReceived(text); }, Qt::QueuedConnection);
        };
        auto *caller = new InstanceCaller(socket, receive, this);
        m_callers.append(caller);
        connect(caller, &QObject::destroyed, this, [this, caller] { m_callers.removeOne(caller); });
        if (m_callers.size() > maxCallers)
            m_callers.takeFirst()->hangUp();
    }
}
