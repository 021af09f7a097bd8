// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QLocalServer>
#include <QVector>

class InstanceCaller;

// Makes one process the first instance of a program, which receives the messages of the others.
//
// The first is the one that holds a lock; the system releases it when the process ends, however it
// ends. Messages come through a socket for this user alone. Callers are served side by side, none
// waits for another: whoever has not sent a whole message after maxCallTime milliseconds is hung up
// on, and so is the one that has been at it longest when there are more than maxCallers.
class InstanceServer : public QLocalServer
{
    Q_OBJECT

public:
    static constexpr int maxCallers = 16;
    static constexpr int maxCallTime = 5000;

    // For the files at @p place, see instancePlace(). With an empty one, every process is a first
    // one that nobody can reach.
    InstanceServer(const QString &place, QObject *parent);
    ~InstanceServer() override;

    // Whether another process is the first. If not, this one is from here on and listens. What the
    // system refuses is reported in "debug.message" and keeps nobody from going on as the first.
    [[nodiscard]] bool isTaken();

    [[nodiscard]] QString socketPath() const;

    // Takes in those who have connected.
    void admitCallers();

Q_SIGNALS:
    // Somebody's whole message; the sender has been told that it has arrived.
    void messageReceived(const QString &message);

private:
    enum Lock { Held, HeldByAnother, Impossible };
    Lock lock();

    const QString m_place;
    QFile m_lockFile;
    bool m_isFirst = false;
    QVector<InstanceCaller *> m_callers;
};
