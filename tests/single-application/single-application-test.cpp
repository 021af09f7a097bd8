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
    const QFile::Permissions permissions = QFile(socketPath()).permissions();
    QVERIFY2(!(permissions & (QFile::WriteOther | QFile::WriteGroup)), "other users can send");
    for (const QByteArray &message :
         {QByteArray("--open /home/me/a file.txt"), QByteArray(), QByteArray("a\nb\tc\r\n"),
          QByteArray("ä α ж א ب あ 😀"), QByteArray("0123456789abcdef").repeated(65536)})
        QVERIFY2(handsOver(message), message.left(40).constData());
}

void SingleApplicationTest::replacesCrashedInstance()
{
    killFirst();
    QVERIFY2(QFile::exists(socketPath()), "nothing stale is left to be replaced");
    startFirst();
    QVERIFY(handsOver("after the crash"));
}

void SingleApplicationTest::leavesOddPeersAlone_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("half a length") << QByteArray("\0\0", 2);
    QTest::newRow("half a message") << QByteArray("\0\0\4\0half", 8);
    QTest::newRow("two gigabytes") << QByteArray("\x7F\xFF\xFF\xFFx");
    QTest::newRow("four gigabytes") << QByteArray("\xFF\xFF\xFF\xFFx");
}

// One that hangs up and one that stays.
void SingleApplicationTest::leavesOddPeersAlone()
{
    QFETCH(QByteArray, sent);
    QLocalSocket peers[2];
    for (QLocalSocket &peer : peers) {
        peer.connectToServer(socketPath());
        QVERIFY(peer.waitForConnected());
        peer.write(sent);
        peer.flush();
    }
    peers[0].abort();
    QVERIFY(handsOver("still there"));
}

QTEST_MAIN(SingleApplicationTest)
#include "single-application-test.moc"
