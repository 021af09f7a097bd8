// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QTcpSocket;

// The connection that one request has left open for the next.
class KeptConnection : public QObject
{
    Q_OBJECT

public:
    KeptConnection();
    ~KeptConnection() override;

    // The connection, if it was kept with the same @p key and is still good; null otherwise.
    [[nodiscard]] std::unique_ptr<QTcpSocket> take(const QString &key);
    // Keeps @p socket instead of the one that was kept before.
    void keep(const QString &key, std::unique_ptr<QTcpSocket> socket);

private:
    QString m_key;
    std::unique_ptr<QTcpSocket> m_socket;
};
