// SPDX-License-Identifier: MIT

#include "support/test-host.h"

#include <QCryptographicHash>
#include <QLocalSocket>
#include <QtTest>

// The class of single instances, as a host has it from the library.
class SingleApplicationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TMPDIR", QFile::encodeName(scratchFolder())); }
    void init() { startFirst(); }
    void cleanup() { killFirst(); }
    void handsMessagesOver();
    void replacesCrashedInstance();
    void tellsUsersApart();
    void leavesOddPeersAlone_data();
    void leavesOddPeersAlone();

private:
    static std::unique_ptr<QProcess> start();
    void startFirst();
    void killFirst();
    // Whether a second instance hands @p message over to the first.
    bool handsOver(const QByteArray &message);
    [[nodiscard]] static QString socketPath();

    std::unique_ptr<QProcess> m_first;
};

std::unique_ptr<QProcess> SingleApplicationTest::start()
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(SINGLE_APPLICATION_HOST, QStringList());
    return process;
}

void SingleApplicationTest::startFirst()
{
    m_first = start();
    QVERIFY(m_first->waitForReadyRead(20000));
    QCOMPARE(m_first->readLine(), QByteArray("first\n"));
}

void SingleApplicationTest::killFirst()
{
    m_first->kill();
    m_first->waitForFinished();
}

bool SingleApplicationTest::handsOver(const QByteArray &message)
{
    const std::unique_ptr<QProcess> second = start();
    second->write(message);
    second->closeWriteChannel();
    if (!second->waitForFinished(20000) || second->exitCode() != 0)
        return false;
    const QByteArray hash = QCryptographicHash::hash(message, QCryptographicHash::Sha1).toHex();
    return (m_first->canReadLine() || m_first->waitForReadyRead(10000))
        && m_first->readAll() == QByteArray::number(message.size()) + ' ' + hash + '\n';
}

QString SingleApplicationTest::socketPath()
{
    const QFileInfoList sockets =
        QDir(scratchFolder()).entryInfoList({"qtsingleapp-*"}, QDir::System);
    return sockets.size() == 1 ? sockets.first().filePath() : QString();
}

void SingleApplicationTest::handsMessagesOver()
{
    for (const QByteArray &message :
         {QByteArray("--open /home/me/a file.txt"), QByteArray(), QByteArray("a\nb\tc\r\n"),
          QByteArray("ä α ж א ب あ 😀"), QByteArray("0123456789abcdef").repeated(65536)})
        QVERIFY2(handsOver(message), message.left(40).constData());
}

void SingleApplicationTest::replacesCrashedInstance()
{
    QVERIFY(!socketPath().isEmpty());
    killFirst();
    QVERIFY2(QFile::exists(socketPath()), "nothing stale is left to be replaced");
    startFirst();
    QVERIFY(handsOver("after the crash"));
}

void SingleApplicationTest::tellsUsersApart()
{
    const QFile::Permissions permissions = QFile(socketPath()).permissions();
    QVERIFY(permissions & QFile::WriteOwner);
    QVERIFY(!(permissions & (QFile::WriteOther | QFile::WriteGroup)));
}

void SingleApplicationTest::leavesOddPeersAlone_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<bool>("stays");
    const auto announced = [](quint32 length) {
        QByteArray bytes;
        QDataStream(&bytes, QIODevice::WriteOnly) << length;
        return bytes;
    };
    for (const bool stays : {false, true}) {
        const char *then = stays ? "stays" : "hangs up";
        QTest::addRow("nothing, %s", then) << QByteArray() << stays;
        QTest::addRow("half a length, %s", then) << QByteArray("\0\0", 2) << stays;
        QTest::addRow("half a message, %s", then) << announced(1000) + "half" << stays;
    }
    QTest::newRow("four gigabytes") << announced(0xFFFFFFFF) + "x" << true;
    QTest::newRow("two gigabytes") << announced(0x7FFFFFFF) + "x" << true;
}

void SingleApplicationTest::leavesOddPeersAlone()
{
    QFETCH(QByteArray, sent);
    QFETCH(bool, stays);
    QLocalSocket peer;
    peer.connectToServer(socketPath());
    QVERIFY(peer.waitForConnected());
    peer.write(sent);
    peer.flush();
    if (!stays)
        peer.abort();
    QVERIFY(handsOver("still there"));
}

QTEST_MAIN(SingleApplicationTest)
#include "single-application-test.moc"
