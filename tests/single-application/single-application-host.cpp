// SPDX-License-Identifier: MIT

// A program of one instance, as a host would write it; the test starts it several times.
//
// Without a running instance it says "first" and then the length and hash of each message. With
// one it sends what it reads from its standard input, says how many milliseconds that took, and
// ends with 0 if it was accepted.

#include <kovakit-qt/kovakit-qt.h>

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <sys/stat.h>

int main(int argc, char *argv[])
{
    ::umask(0);
    QElapsedTimer asked;
    QtSingleApplication app(QStringLiteral("single-application-test"), argc, argv);
    asked.start();
    if (app.isRunning()) {
        QFile input;
        if (!input.open(stdin, QIODevice::ReadOnly))
            return 2;
        const bool isSent = app.sendMessage(QString::fromUtf8(input.readAll()));
        std::printf("%lld\n", asked.elapsed());
        return isSent ? 0 : 3;
    }
    QObject::connect(&app, &QtSingleApplication::messageReceived, [](const QString &message) {
        const QByteArray hash =
            QCryptographicHash::hash(message.toUtf8(), QCryptographicHash::Sha1).toHex();
        std::printf("%d %s\n", int(message.toUtf8().size()), hash.constData());
        std::fflush(stdout);
    });
    std::puts("first");
    std::fflush(stdout);
    return QtSingleApplication::exec();
}
