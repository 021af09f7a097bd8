// SPDX-License-Identifier: MIT

#include "support/test-host.h"

#include <QCryptographicHash>
#include <QLocalSocket>
#include <QtTest>

#include <algorithm>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr uid_t neighbour = 65534;
constexpr int longestWait = 1000;

bool isRoot()
{
    return ::geteuid() == 0;
}

// While it lives, this process is the other user to everyone whom it meets.
class AsNeighbour
{
public:
    AsNeighbour() { m_isSwitched = ::seteuid(neighbour) == 0; }
    ~AsNeighbour() { m_isSwitched = m_isSwitched && ::seteuid(0) == 0; }
    Q_DISABLE_COPY(AsNeighbour)

private:
    bool m_isSwitched;
};

bool changeMode(const QString &path, mode_t mode)
{
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

QString makeFolder(const QString &path, mode_t mode, uid_t owner)
{
    const QByteArray name = QFile::encodeName(path);
    QDir().mkpath(path);
    const bool isMade = ::chown(name.constData(), owner, gid_t(-1)) == 0 && changeMode(path, mode);
    return isMade ? path : QString();
}

} // namespace

// The class of single instances, as a host has it from the library.
class SingleApplicationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { kill(m_first); }
    void handsMessagesOver();
    void replacesCrashedInstance();
    void leavesOddPeersAlone_data();
    void leavesOddPeersAlone();
    void servesManyPeersAtOnce();
    void keepsToFoldersOfItsOwn_data();
    void keepsToFoldersOfItsOwn();
    void startsWithoutAnyFolder();
    void hearsNoOtherUser();
    void tellsNoOtherUser();

private:
    [[nodiscard]] std::unique_ptr<QProcess> start() const;
    static void kill(const std::unique_ptr<QProcess> &process);
    void startFirst();
    // Whether a second instance hands @p message over to the first, without waiting for others.
    bool handsOver(const QByteArray &message);
    [[nodiscard]] QString path(const QString &name) const { return m_folder + '/' + name; }
    [[nodiscard]] static QString socketIn(const QString &folder);

    QProcessEnvironment m_environment;
    QString m_folder;
    std::unique_ptr<QProcess> m_first;
};

// The shared folder is one that everybody can write to; the run-time folder is private.
void SingleApplicationTest::init()
{
    static int count = 0;
    QVERIFY(changeMode(scratchFolder(), 0711));
    m_folder = scratchFolder() + QString("/%1").arg(++count);
    makeFolder(m_folder, 0711, ::geteuid());
    m_environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        m_environment.remove(name);
    m_environment.insert("TMPDIR", makeFolder(path("tmp"), 01777, ::geteuid()));
    m_environment.insert("HOME", makeFolder(path("h"), 0755, ::geteuid()));
    m_environment.insert("XDG_RUNTIME_DIR", makeFolder(path("run"), 0700, ::geteuid()));
}

std::unique_ptr<QProcess> SingleApplicationTest::start() const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->setProcessEnvironment(m_environment);
    process->start(SINGLE_APPLICATION_HOST, QStringList());
    return process;
}

void SingleApplicationTest::kill(const std::unique_ptr<QProcess> &process)
{
    if (process) {
        process->kill();
        process->waitForFinished();
    }
}

void SingleApplicationTest::startFirst()
{
    m_first = start();
    QVERIFY(m_first->waitForReadyRead(20000));
    QCOMPARE(m_first->readLine(), QByteArray("first\n"));
}

bool SingleApplicationTest::handsOver(const QByteArray &message)
{
    const std::unique_ptr<QProcess> second = start();
    second->write(message);
    second->closeWriteChannel();
    if (!second->waitForFinished(20000) || second->exitCode() != 0
        || second->readAll().trimmed().toInt() > longestWait)
        return false;
    const QByteArray hash = QCryptographicHash::hash(message, QCryptographicHash::Sha1).toHex();
    return (m_first->canReadLine() || m_first->waitForReadyRead(10000))
        && m_first->readAll() == QByteArray::number(message.size()) + ' ' + hash + '\n';
}

QString SingleApplicationTest::socketIn(const QString &folder)
{
    const QStringList found = QDir(folder).entryList({"*.socket"}, QDir::System);
    return found.size() == 1 ? folder + '/' + found.first() : QString();
}

void SingleApplicationTest::handsMessagesOver()
{
    startFirst();
    struct stat status = {};
    QVERIFY(::stat(QFile::encodeName(socketIn(path("run"))).constData(), &status) == 0);
    QVERIFY2((status.st_mode & 077) == 0, "others can send, whatever the umask");
    for (const QByteArray &message :
         {QByteArray("--open /home/me/a file.txt"), QByteArray(), QByteArray("a\nb\tc\r\n"),
          QByteArray("ä α ж א ب あ 😀"), QByteArray("0123456789abcdef").repeated(65536)})
        QVERIFY2(handsOver(message), message.left(40).constData());
}

void SingleApplicationTest::replacesCrashedInstance()
{
    startFirst();
    kill(m_first);
    QVERIFY2(!socketIn(path("run")).isEmpty(), "nothing stale is left to be replaced");
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
    startFirst();
    QLocalSocket peers[2];
    for (QLocalSocket &peer : peers) {
        peer.connectToServer(socketIn(path("run")));
        QVERIFY(peer.waitForConnected());
        peer.write(sent);
        peer.flush();
    }
    peers[0].abort();
    QVERIFY(handsOver("still there"));
}

// One of them sends a byte now and then; a time for each byte would let it stay for minutes.
void SingleApplicationTest::servesManyPeersAtOnce()
{
    startFirst();
    QLocalSocket peers[200];
    for (QLocalSocket &peer : peers) {
        peer.connectToServer(socketIn(path("run")));
        QVERIFY(peer.waitForConnected());
    }
    QVERIFY(handsOver("past them all"));

    QLocalSocket &slow = peers[199];
    QTimer drip;
    connect(&drip, &QTimer::timeout, &slow, [&slow] {
        slow.write("\0", 1);
        slow.flush();
    });
    slow.write(QByteArray("\0\0\4\0", 4));
    drip.start(200);
    QVERIFY(handsOver("past the slow one"));
    const auto areGone = [&peers] {
        return std::all_of(std::begin(peers), std::end(peers), [](const QLocalSocket &peer) {
            return peer.state() == QLocalSocket::UnconnectedState;
        });
    };
    QTRY_VERIFY_WITH_TIMEOUT(areGone(), 8000);
}

void SingleApplicationTest::keepsToFoldersOfItsOwn_data()
{
    QTest::addColumn<QString>("runtime");
    QTest::addColumn<uint>("mode");
    QTest::addColumn<uint>("owner");
    QTest::addColumn<bool>("hasHome");
    QTest::addColumn<QString>("place");
    const QString cache = "h/.cache/kovakit-run";
    const QString temporary = "tmp/kovakit-run-" + QString::number(::geteuid());
    QTest::newRow("not set") << "" << 0700U << ::geteuid() << true << cache;
    QTest::newRow("open to others") << "run" << 0755U << ::geteuid() << true << cache;
    QTest::newRow("another user's") << "run" << 0700U << neighbour << true << cache;
    QTest::newRow("a link") << "link" << 0700U << ::geteuid() << true << cache;
    QTest::newRow("name too long")
        << "run/" + QString(80, 'x') << 0700U << ::geteuid() << true << cache;
    QTest::newRow("no home either") << "" << 0700U << ::geteuid() << false << temporary;
}

void SingleApplicationTest::keepsToFoldersOfItsOwn()
{
    QFETCH(QString, runtime);
    QFETCH(uint, mode);
    QFETCH(uint, owner);
    QFETCH(bool, hasHome);
    QFETCH(QString, place);
    if (owner != ::geteuid() && !isRoot())
        QSKIP("takes root to make another user's folder");
    if (runtime == "link")
        QVERIFY(QFile::link(path("run"), path("link")));
    else if (!runtime.isEmpty())
        makeFolder(path(runtime), mode, owner);
    m_environment.insert("XDG_RUNTIME_DIR", runtime.isEmpty() ? QString() : path(runtime));
    if (!hasHome)
        m_environment.insert("HOME", "/dev/null");
    startFirst();
    QVERIFY2(!socketIn(path(place)).isEmpty(), "it listens elsewhere");
    QVERIFY(handsOver("found all the same"));
}

// Nobody can be found then, but each start is a start.
void SingleApplicationTest::startsWithoutAnyFolder()
{
    if (!isRoot())
        QSKIP("takes root to make another user's folder");
    m_environment.insert("HOME", "/dev/null");
    m_environment.remove("XDG_RUNTIME_DIR");
    makeFolder(path("tmp/kovakit-run-" + QString::number(::geteuid())), 0777, neighbour);
    startFirst();
    const std::unique_ptr<QProcess> other = std::move(m_first);
    startFirst();
    kill(other);
}

void SingleApplicationTest::hearsNoOtherUser()
{
    if (!isRoot())
        QSKIP("takes root to become another user");
    startFirst();
    // Even where the folder and the socket have been opened to everybody.
    const QString socket = socketIn(path("run"));
    QVERIFY(changeMode(socket, 0777));
    makeFolder(path("run"), 0711, ::geteuid());
    QLocalSocket peer;
    {
        const AsNeighbour other;
        peer.connectToServer(socket);
        QVERIFY2(peer.waitForConnected(), qPrintable(peer.errorString()));
    }
    peer.write(QByteArray("\0\0\0\4evil", 8));
    QVERIFY(peer.state() == QLocalSocket::UnconnectedState || peer.waitForDisconnected(5000));
    QCOMPARE(peer.readAll(), QByteArray());
    makeFolder(path("run"), 0700, ::geteuid());
    QVERIFY2(handsOver("of this user"), "something else was received");
}

// Somebody else listens where the first instance would.
void SingleApplicationTest::tellsNoOtherUser()
{
    if (!isRoot())
        QSKIP("takes root to become another user");
    startFirst();
    const QByteArray name = QFile::encodeName(socketIn(path("run")));
    QVERIFY(QFile::remove(QFile::decodeName(name)));
    const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::copy(name.begin(), name.end(), address.sun_path);
    QVERIFY(::bind(server, reinterpret_cast<sockaddr *>(&address), sizeof(address)) == 0);
    {
        const AsNeighbour other;
        QVERIFY(::listen(server, 1) == 0);
    }
    const std::unique_ptr<QProcess> second = start();
    second->write("a secret");
    second->closeWriteChannel();
    QVERIFY(second->waitForFinished(20000));
    QCOMPARE(second->exitCode(), 3);
    QVERIFY(second->readAll().trimmed().toInt() <= longestWait);
    const int connection = ::accept(server, nullptr, nullptr);
    QVERIFY(connection >= 0);
    char byte = 0;
    QCOMPARE(::read(connection, &byte, 1), ssize_t(0));
    ::close(connection);
    ::close(server);
}

QTEST_MAIN(SingleApplicationTest)
#include "single-application-test.moc"
