#include "support/test-host.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>
#include <QProcess>
#include <QtTest>

namespace {

QByteArray lineOf(const QByteArray &message)
{
    return QByteArray::number(message.size()) + ' '
         + QCryptographicHash::hash(message, QCryptographicHash::Sha1).toHex() + '\n';
}

QByteArray announced(quint32 length)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << length;
    return bytes;
}

} // namespace

class SingleApplicationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void handsMessagesOver_data();
    void handsMessagesOver();
    void replacesCrashedInstance();
    void tellsUsersApart();
    void leavesOddPeersAlone_data();
    void leavesOddPeersAlone();

private:
    std::unique_ptr<QProcess> start() const;
    int send(const QByteArray &message) const;
    QString socketPath() const;

    std::unique_ptr<QProcess> m_first;
};

void SingleApplicationTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
}

std::unique_ptr<QProcess> SingleApplicationTest::start() const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(QStringLiteral(SINGLE_APPLICATION_HOST), QStringList());
    return process;
}

void SingleApplicationTest::init()
{
    m_first = start();
    QVERIFY(m_first->waitForReadyRead(20000));
    QCOMPARE(m_first->readLine(), QByteArray("first\n"));
}

void SingleApplicationTest::cleanup()
{
    if (!m_first)
        return;
    m_first->kill();
    m_first->waitForFinished();
}

int SingleApplicationTest::send(const QByteArray &message) const
{
    const std::unique_ptr<QProcess> second = start();
    second->write(message);
    second->closeWriteChannel();
    return second->waitForFinished(20000) ? second->exitCode() : -1;
}

QString SingleApplicationTest::socketPath() const
{
    const QStringList names = QDir(scratchFolder()).entryList({"qtsingleapp-*"}, QDir::System);
    return names.size() == 1 ? scratchFolder() + QLatin1Char('/') + names.first() : QString();
}

void SingleApplicationTest::handsMessagesOver_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("arguments") << QByteArray("--open /home/me/a file.txt");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("scripts") << QByteArray(
        "\xC3\xA4 \xCE\xB1 \xD0\xB6 \xD7\x90 \xD8\xA8 \xE3\x81\x82 \xF0\x9F\x98\x80");
    QTest::newRow("lines") << QByteArray("a\nb\tc\r\n");
    QTest::newRow("a megabyte") << QByteArray("0123456789abcdef").repeated(65536);
}

void SingleApplicationTest::handsMessagesOver()
{
    QFETCH(QByteArray, message);
    QCOMPARE(send(message), 0);
    QVERIFY(m_first->canReadLine() || m_first->waitForReadyRead(10000));
    QCOMPARE(m_first->readLine(), lineOf(message));
}

void SingleApplicationTest::replacesCrashedInstance()
{
    QVERIFY(!socketPath().isEmpty());
    m_first->kill();
    QVERIFY(m_first->waitForFinished());
    QVERIFY2(QFile::exists(socketPath()), "nothing stale is left to be replaced");

    m_first = start();
    QVERIFY(m_first->waitForReadyRead(20000));
    QCOMPARE(m_first->readLine(), QByteArray("first\n"));
    QCOMPARE(send("after the crash"), 0);
    QVERIFY(m_first->waitForReadyRead(10000));
    QCOMPARE(m_first->readLine(), lineOf("after the crash"));
}

void SingleApplicationTest::tellsUsersApart()
{
    QFile socket(socketPath());
    QVERIFY((socket.permissions() & (QFile::WriteOther | QFile::WriteGroup)) == 0);
}

void SingleApplicationTest::leavesOddPeersAlone_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<bool>("stays");
    QTest::newRow("hangs up") << QByteArray() << false;
    QTest::newRow("says nothing") << QByteArray() << true;
    QTest::newRow("half a length, hangs up") << QByteArray("\0\0", 2) << false;
    QTest::newRow("half a length, stays") << QByteArray("\0\0", 2) << true;
    QTest::newRow("half a message, hangs up") << announced(1000) + "half" << false;
    QTest::newRow("half a message, stays") << announced(1000) + "half" << true;
    QTest::newRow("four gigabytes") << announced(0xFFFFFFFF) + "x" << true;
    QTest::newRow("two gigabytes") << announced(0x7FFFFFFF) + "x" << true;
}

void SingleApplicationTest::leavesOddPeersAlone()
{
#ifndef SINGLE_APPLICATION_IS_PATCHED
    QSKIP("A packaged copy is as published: such a peer keeps it busy");
#endif
    QFETCH(QByteArray, sent);
    QFETCH(bool, stays);
    QLocalSocket peer;
    peer.connectToServer(socketPath());
    QVERIFY(peer.waitForConnected());
    peer.write(sent);
    peer.flush();
    if (!stays)
        peer.abort();

    QCOMPARE(send("still there"), 0);
    QVERIFY(m_first->canReadLine() || m_first->waitForReadyRead(10000));
    QCOMPARE(m_first->readAll(), lineOf("still there"));
}

QTEST_MAIN(SingleApplicationTest)
#include "single-application-test.moc"
