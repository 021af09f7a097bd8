// SPDX-License-Identifier: MIT

#include "support/http-server.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/image-downloader.h>

#include <QNetworkProxy>
#include <QPointer>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QtTest>

#include <atomic>
#include <ctime>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Each byte is a chunk of its own; what takes the square of their number takes minutes.
constexpr int pieces = 200000;

// A server with a thread of its own, which goes on sending whatever the program does meanwhile.
class FloodServer : public QThread
{
public:
    FloodServer(const QByteArray &begin, const QByteArray &rest)
        : m_begin(begin)
        , m_rest(rest)
    {
        start();
        m_isListening.acquire();
    }
    ~FloodServer() override
    {
        requestInterruption();
        wait();
    }

    QString base() const { return QString("http://127.0.0.1:%1/").arg(m_port); }
    // Requests that have come, and those of them whose client has gone.
    int begun() const { return m_begun; }
    int closed() const { return m_closed; }

protected:
    void run() override
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        m_port = server.serverPort();
        m_isListening.release();
        while (!isInterruptionRequested()) {
            if (!server.waitForNewConnection(50))
                continue;
            const std::unique_ptr<QTcpSocket> client(server.nextPendingConnection());
            client->waitForReadyRead();
            ++m_begun;
            client->write(m_begin);
            while (!isInterruptionRequested() && client->write(m_rest) > 0
                   && client->waitForBytesWritten()) { }
            ++m_closed;
        }
    }

private:
    const QByteArray m_begin;
    const QByteArray m_rest;
    QSemaphore m_isListening;
    quint16 m_port = 0;
    std::atomic<int> m_begun{0};
    std::atomic<int> m_closed{0};
};

int threadCount()
{
    return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

// A server for one certificate, which is made for the test.
class EncryptedServer : public QTcpServer
{
public:
    EncryptedServer(const QString &certificate, const QString &key)
        : m_certificate(certificate)
        , m_key(key)
    {
        listen(QHostAddress::LocalHost);
    }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        socket->setLocalCertificate(m_certificate);
        socket->setPrivateKey(m_key);
        connect(socket, &QIODevice::readyRead, socket, [socket] {
            socket->readAll();
            socket->write(HttpServer::response(QByteArray(300000, 's')));
        });
        socket->startServerEncryption();
    }

private:
    const QString m_certificate;
    const QString m_key;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

class ImageDownloaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void writesWhatArrives();
    void leavesTheFileOnAnError();
    void neverWritesToOddNames();
    void writesToOwnFoldersOnly();
    void tellsItsTimes();
    void saysNothingAfterStop();
    void outlivesEndlessHeads_data();
    void outlivesEndlessHeads();
    void asksTheProxy();
    void trustsCertificatesOnly();

private:
    int download(const QString &file, const QString &path);
    [[nodiscard]] QString inFolder(const QString &name) const { return m_folder + '/' + name; }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder).entryList(QDir::AllEntries | QDir::System | QDir::Hidden
                                        | QDir::NoDotAndDotDot);
    }

    HttpServer m_server;
    QString m_folder;
};

void ImageDownloaderTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    m_server.answer("/new", "new bytes");
    const auto sends = [this](const char *path, const QByteArray &text) {
        m_server.handle(path, [text](QTcpSocket *socket) {
            socket->write(text);
            socket->disconnectFromHost();
        });
    };
    sends("/short", "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nonly this");
    sends("/packed", "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n" + HttpServer::packed());
    sends("/pieces", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                         + QByteArray("1\r\n \r\n").repeated(pieces) + "0\r\n\r\n");
    sends("/lengths", "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\nab");
    sends("/negative", "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n");
    sends("/coding", "HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip, chunked\r\n\r\n0\r\n\r\n");
    sends("/chunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n-1\r\n");
    sends("/cut", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\ncut \r\n");
    sends("/other", "SSH-2.0-Server\r\n\r\n");
    m_server.handle("/drops", [](QTcpSocket *socket) {
        // Byte by byte, with everything that a response may have around its content.
        const QByteArray text =
            "\r\nHTTP/1.1 100 Continue\r\nA: b\r\n\r\nHTTP/1.1 200 OK\nTransfer-Encoding:\r\n "
            "Chunked\r\n\r\n3;name=\"value\"\r\nin \r\n00E \r\nmany pieces\r\n\n\r\n0\r\nC: "
            "d\r\n\r\n";
        auto *timer = new QTimer(socket);
        connect(timer, &QTimer::timeout, socket, [socket, timer, text, at = 0]() mutable {
            socket->write(text.mid(at++, 1));
            if (at == text.size())
                timer->stop();
        });
        timer->start(0);
    });
    m_server.handle("/gigabyte", [](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\nContent-Length: 1073741824\r\n\r\n");
    });
    m_server.handle("/endless", [](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\n\r\n");
        const auto pour = [socket] {
            if (socket->bytesToWrite() < 1 << 20)
                socket->write(QByteArray(1 << 20, 'x'));
        };
        connect(socket, &QTcpSocket::bytesWritten, socket, pour);
        pour();
    });
    m_server.handle("/silent", [](QTcpSocket *) {});
}

void ImageDownloaderTest::init()
{
    static int count = 0;
    m_folder = scratchFolder() + QString("/%1").arg(++count);
    QVERIFY(QDir().mkpath(m_folder));
}

int ImageDownloaderTest::download(const QString &file, const QString &path)
{
    const QString address = path.contains(':') ? path : m_server.base() + path;
    ImageDownloader job(file, address, nullptr);
    QSignalSpy finished(&job, &ImageDownloader::sigDownloadFinish);
    job.start();
    if (job.isFinished() || !finished.wait(20000) || !job.isFinished())
        return 99;
    if (finished.at(0).at(0).toString() != address)
        return 98;
    return finished.at(0).at(1).toInt();
}

void ImageDownloaderTest::writesWhatArrives()
{
    const QString file = inFolder("a b-ä.png");
    QCOMPARE(download(file, "pieces"), 0);
    QCOMPARE(contentOf(file), QByteArray(pieces, ' '));
    QCOMPARE(download(inFolder("../" + QFileInfo(m_folder).fileName() + "/a b-ä.png"), "new"), 0);
    QCOMPARE(contentOf(file), QByteArray("new bytes"));
    QCOMPARE(download(file, "drops"), 0);
    QCOMPARE(contentOf(file), QByteArray("in many pieces\r\n\n"));
    QCOMPARE(download(file, "packed"), 0);
    QCOMPARE(contentOf(file), HttpServer::packed());
    QCOMPARE(entries(), QStringList("a b-ä.png"));
}

void ImageDownloaderTest::leavesTheFileOnAnError()
{
    const QString pipe = scratchFolder() + "/pipe";
    QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
    const QString file = inFolder("old.png");
    QCOMPARE(download(file, "new"), 0);
    for (const QString &address :
         QStringList{"missing", "short", "lengths", "negative", "coding", "chunk", "cut", "other",
                     "gigabyte", "endless", "http://", ":", "nonsense:x", "file://" + pipe}) {
        QVERIFY2(download(file, address) == -1, qPrintable(address));
        QCOMPARE(contentOf(file), QByteArray("new bytes"));
        QCOMPARE(entries().size(), 1);
    }
}

void ImageDownloaderTest::neverWritesToOddNames()
{
    const QString precious = writeScratchFile("precious/inner/file", "precious");
    QVERIFY(QFile::link(scratchFolder() + "/precious", inFolder("folder")));
    for (const QString &name :
         QStringList{QString(), ".", "..", QString("a") + QChar::Null + "b", QString(256, 'a'),
                     QString(100, QChar(0x4E00)), "missing/a.png", "folder/inner", "folder/a.png",
                     "folder/inner/file"}) {
        QCOMPARE(download(inFolder(name), "new"), 0);
        QCOMPARE(entries(), QStringList("folder"));
    }
    QCOMPARE(contentOf(precious), QByteArray("precious"));
    QCOMPARE(QDir(inFolder("folder")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("inner"));

    // The link itself makes way, and what it leads to stays.
    QVERIFY(QFile::link(precious, inFolder("link.png")));
    QCOMPARE(download(inFolder("link.png"), "new"), 0);
    QCOMPARE(contentOf(precious), QByteArray("precious"));
    QCOMPARE(contentOf(inFolder("link.png")), QByteArray("new bytes"));
}

void ImageDownloaderTest::writesToOwnFoldersOnly()
{
    const auto others = QFile::WriteOther | QFile::WriteGroup;
    QVERIFY(QFile::setPermissions(m_folder, QFile::permissions(m_folder) | others));
    QCOMPARE(download(inFolder("a.png"), "new"), 0);
    QVERIFY2(!(QFile::permissions(m_folder) & others), "others could exchange the files");

    if (::geteuid() != 0)
        return; // it takes root to make another user's folder
    QVERIFY(QDir().mkpath(inFolder("inner")));
    QVERIFY(::chown(QFile::encodeName(m_folder).constData(), 1, 1) == 0);
    for (const char *name : {"b.png", "inner/b.png"}) {
        QCOMPARE(download(inFolder(name), "new"), 0);
        QVERIFY2(!QFile::exists(inFolder(name)), name);
    }
}

void ImageDownloaderTest::tellsItsTimes()
{
    QPointer<QTcpSocket> socket;
    m_server.handle("/slow", [&socket](QTcpSocket *client) { socket = client; });
    ImageDownloader job(inFolder("a.png"), m_server.base() + "slow", nullptr);
    job.start();
    QTRY_VERIFY(socket && job.idleTime() >= 500);
    socket->write("HTTP/1.1 200 OK\r\n\r\n");
    QTRY_VERIFY(job.idleTime() < 250);
    QVERIFY(job.runningTime() >= 500);
    socket->disconnectFromHost();
    QTRY_VERIFY(job.isFinished());
}

void ImageDownloaderTest::saysNothingAfterStop()
{
    QSignalSpy abandoned(&m_server, &HttpServer::abandoned);
    QStringList ended;
    const auto start = [&](const QString &name) {
        auto job =
            std::make_unique<ImageDownloader>(inFolder(name), m_server.base() + "silent", nullptr);
        connect(job.get(), &ImageDownloader::sigDownloadFinish, this,
                [&ended, name](const QString &, int result) {
                    ended.append(name + QString::number(result));
                });
        QSignalSpy requested(&m_server, &HttpServer::requested);
        job->start();
        requested.wait();
        return job;
    };
    const auto stopped = start("stopped");
    auto deleted = start("deleted");
    stopped->stop();
    deleted.reset();
    QTRY_COMPARE(abandoned.count(), 2);
    QCOMPARE(ended, QStringList());
    QCOMPARE(entries(), QStringList());

    const auto givenUp = start("given up");
    givenUp->giveUp();
    QTRY_COMPARE(ended, QStringList("given up-1"));
}

void ImageDownloaderTest::outlivesEndlessHeads_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("rest");
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    const QByteArray chunked = ok + "Transfer-Encoding: chunked\r\n\r\n";
    const QByteArray noise(1 << 16, '0');
    QTest::newRow("status line") << QByteArray("HTTP/1.1 200 ") << noise;
    QTest::newRow("header line") << ok << noise;
    QTest::newRow("headers") << ok << QByteArray("Name: value\r\n").repeated(5000);
    QTest::newRow("100 Continue") << QByteArray()
                                  << QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(3000);
    QTest::newRow("chunk size") << chunked << noise;
    QTest::newRow("chunk extension") << chunked + "1;" << noise;
    QTest::newRow("trailers") << chunked + "0\r\n" << QByteArray("Name: value\r\n").repeated(5000);
}

void ImageDownloaderTest::outlivesEndlessHeads()
{
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, rest);
    FloodServer server(begin, rest);
    const int threads = threadCount();
    // Three that are closed in the middle, and one that sees how it ends.
    for (int i = 1; i <= 3; ++i) {
        auto job = std::make_unique<ImageDownloader>(inFolder("a.png"), server.base(), nullptr);
        job->start();
        QTRY_COMPARE(server.begun(), i);
        QElapsedTimer closing;
        closing.start();
        job.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY2(closing.elapsed() < 500, "whoever closes it waits");
        QTRY_COMPARE(server.closed(), i);
    }
    QCOMPARE(download(inFolder("a.png"), server.base()), -1);
    QTRY_COMPARE(server.closed(), 4);
    QVERIFY2(threadCount() <= threads, "a thread has stayed");
    const std::clock_t before = std::clock();
    QTest::qWait(300);
    QVERIFY2(std::clock() - before < CLOCKS_PER_SEC / 10, "something goes on in the background");
}

void ImageDownloaderTest::asksTheProxy()
{
    m_server.answer("http://pictures.example/a.png", "through the proxy");
    QNetworkProxy proxy(QNetworkProxy::HttpProxy, "127.0.0.1", m_server.serverPort());
    QNetworkProxy::setApplicationProxy(proxy);
    const int result = download(inFolder("a.png"), "http://pictures.example/a.png?b=1#c");
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    QCOMPARE(result, 0);
    QCOMPARE(m_server.requests().last(), QString("http://pictures.example/a.png?b=1"));
    QCOMPARE(contentOf(inFolder("a.png")), QByteArray("through the proxy"));
}

void ImageDownloaderTest::trustsCertificatesOnly()
{
    const QString key = scratchFolder() + "/key.pem";
    const QString certificate = scratchFolder() + "/certificate.pem";
    QProcess openssl;
    openssl.start("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                              "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1",
                              "-keyout", key, "-out", certificate});
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        QSKIP("takes the command openssl to make a certificate");
    const EncryptedServer server(certificate, key);
    const QString address = QString("https://127.0.0.1:%1/a.png").arg(server.serverPort());
    QCOMPARE(download(inFolder("a.png"), address), -1);
    QVERIFY(!QFile::exists(inFolder("a.png")));

    const QSslConfiguration ordinary = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = ordinary;
    trusting.addCaCertificates(certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    const int result = download(inFolder("a.png"), address);
    QSslConfiguration::setDefaultConfiguration(ordinary);
    QCOMPARE(result, 0);
    QCOMPARE(contentOf(inFolder("a.png")), QByteArray(300000, 's'));
}

QTEST_MAIN(ImageDownloaderTest)
#include "image-downloader-test.moc"
