// SPDX-License-Identifier: MIT

// The class that the published QtSingleApplication asks for everything that happens between
// processes, with the interface of its published header.
//
// The published source keeps its files in the shared temporary folder, where any user of the
// machine can take the names first, and serves callers one after the other.

// The published header marks nothing for export.
#pragma GCC visibility push(default)
#include <kovakit-qt/single-application/qtlocalpeer.h>
#pragma GCC visibility pop

#include "instance-message_p.h"
#include "instance-place_p.h"
#include "instance-server_p.h"

#include <QCoreApplication>

const char *QtLocalPeer::ack = instanceAcknowledgement;

QtLocalPeer::QtLocalPeer(QObject *parent, const QString &appId)
    : QObject(parent)
    , id(appId.isEmpty() ? QCoreApplication::applicationFilePath() : appId)
{
    auto *own = new InstanceServer(instancePlace(id), this);
    connect(own, &InstanceServer::messageReceived, this, &QtLocalPeer::messageReceived);
    connect(own, &QLocalServer::newConnection, this, &QtLocalPeer::receiveConnection);
    socketName = own->socketPath();
    server = own;
}

bool QtLocalPeer::isClient()
{
    return static_cast<InstanceServer *>(server)->isTaken();
}

bool QtLocalPeer::sendMessage(const QString &message, int timeout)
{
    return isClient() && sendToInstance(socketName, message, timeout);
}

void QtLocalPeer::receiveConnection()
{
    static_cast<InstanceServer *>(server)->admitCallers();
}
