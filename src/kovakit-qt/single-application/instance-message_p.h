// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

class QLocalSocket;

// A message between two instances of a program: the length of its UTF-8 text in four bytes, the
// highest first, then the text. The receiver answers with instanceAcknowledgement.

// The longest text in bytes.
constexpr quint32 maxInstanceMessage = 16 * 1024 * 1024;

constexpr char instanceAcknowledgement[] = "ack";

// Puts a message together from what arrives, in whatever pieces.
class InstanceMessageReader
{
public:
    enum State { Partial, Complete, TooLong };

    // Bytes beyond the end of the message are ignored.
    State add(const QByteArray &bytes);

    [[nodiscard]] QString text() const;

private:
    QByteArray m_bytes;
};

// Whether the process at the other end of @p socket, which is connected, runs for this user.
[[nodiscard]] bool isOwnProcess(const QLocalSocket &socket);

// Hands @p text to the instance that listens at @p path, and waits until it has it: up to
// @p timeout milliseconds for everything together, without end if that is negative. An instance
// that does not listen yet is given a second to begin.
//
// False, and nothing is sent, if it is another user's process that listens, or @p text is too long.
[[nodiscard]] bool sendToInstance(const QString &path, const QString &text, int timeout);
