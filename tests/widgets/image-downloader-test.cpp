// SPDX-License-Identifier: MIT

#include "support/http-server.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/image-downloader.h>

#include <QPointer>
#include <QTcpSocket>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Each byte is a chunk of its own; what takes the square of their number takes minutes.
constexpr int pieces = 200000;

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
    for (const QString &address : QStringList{"missing", "short", "gigabyte", "endless", "http://",
                                              ":", "nonsense:x", "file://" + pipe}) {
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

QTEST_MAIN(ImageDownloaderTest)
#include "image-downloader-test.moc"
