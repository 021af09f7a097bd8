#include "support/http-server.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/image-downloader.h>

#include <QTcpSocket>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

// The peak of the memory that the process has held, in bytes.
qint64 peakMemory()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("VmHWM:") + 6).simplified().split(' ').first().toLongLong() * 1024;
}

} // namespace

class ImageDownloaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void writesWhatArrives();
    void leavesTheFileOnAnError_data();
    void leavesTheFileOnAnError();
    void neverWritesToOddNames_data();
    void neverWritesToOddNames();
    void followsNoLink();
    void writesToOwnFoldersOnly();
    void boundsWhatItReads_data();
    void boundsWhatItReads();
    void saysNothingAfterStop();
    void refusesPipes();

private:
    int download(const QString &file, const QString &path);
    QStringList entries() const
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
        m_server.handle(QLatin1String(path), [text](QTcpSocket *socket) {
            socket->write(text);
            socket->disconnectFromHost();
        });
    };
    sends("/short", "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nonly this");
    sends("/nothing", "");
    sends("/garbage", "220 this is not a web server\r\n");
    m_server.handle("/reset", [](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nonly this");
        socket->flush();
        socket->abort();
    });
    m_server.handle("/gigabyte", [](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\nContent-Length: 1073741824\r\n\r\n");
    });
    m_server.handle("/endless", [](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\n\r\n");
        const auto pour = [socket] {
            if (socket->bytesToWrite() < 1024 * 1024)
                socket->write(QByteArray(1024 * 1024, 'x'));
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
    const QString address = path.contains(QLatin1Char(':')) ? path : m_server.base() + path;
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
    const QString file = m_folder + "/a b-ä.png";
    QCOMPARE(download(file, "new"), 0);
    QCOMPARE(contentOf(file), QByteArray("new bytes"));

    m_server.answer("/other", "other");
    QCOMPARE(download(m_folder + "/../" + QFileInfo(m_folder).fileName() + "/a b-ä.png", "other"),
             0);
    QCOMPARE(contentOf(file), QByteArray("other"));
    QCOMPARE(entries(), QStringList("a b-ä.png"));
}

void ImageDownloaderTest::leavesTheFileOnAnError_data()
{
    QTest::addColumn<QString>("address");
    for (const char *path : {"missing", "short", "nothing", "garbage", "reset", "gigabyte"})
        QTest::newRow(path) << QString::fromLatin1(path);
    QTest::newRow("TLS") << m_server.base().replace("http:", "https:");
    QTest::newRow("no host") << "http://";
    QTest::newRow("no scheme") << ":";
    QTest::newRow("unknown scheme") << "nonsense:x";
}

void ImageDownloaderTest::leavesTheFileOnAnError()
{
    QFETCH(QString, address);
    const QString file = m_folder + "/old.png";
    QCOMPARE(download(file, "new"), 0);
    QCOMPARE(download(file, address), -1);
    QCOMPARE(contentOf(file), QByteArray("new bytes"));
    QCOMPARE(entries().size(), 1);
}

void ImageDownloaderTest::neverWritesToOddNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("folder itself") << ".";
    QTest::newRow("parent") << "..";
    QTest::newRow("NUL") << "a" + QChar::Null + "b";
    QTest::newRow("too long") << QString(256, QLatin1Char('a'));
    QTest::newRow("too long in UTF-8") << QString(100, QChar(0x4E00));
    QTest::newRow("missing folder") << "missing/a.png";
}

void ImageDownloaderTest::neverWritesToOddNames()
{
    QFETCH(QString, name);
    QCOMPARE(download(m_folder + QLatin1Char('/') + name, "new"), 0);
    QCOMPARE(entries(), QStringList());
}

void ImageDownloaderTest::followsNoLink()
{
    const QString precious = writeScratchFile("precious/file", "precious");
    const QString preciousFolder = QFileInfo(precious).path();

    QVERIFY(QFile::link(precious, m_folder + "/link.png"));
    QCOMPARE(download(m_folder + "/link.png", "new"), 0);
    QCOMPARE(contentOf(precious), QByteArray("precious"));
    QCOMPARE(contentOf(m_folder + "/link.png"), QByteArray("new bytes"));

    QVERIFY(QFile::link(preciousFolder, m_folder + "/folder"));
    QVERIFY(QDir().mkpath(preciousFolder + "/inner"));
    QCOMPARE(download(m_folder + "/folder/file", "new"), 0);
    QCOMPARE(download(m_folder + "/folder/inner/file", "new"), 0);
    QCOMPARE(contentOf(precious), QByteArray("precious"));
    QVERIFY(QDir(preciousFolder + "/inner").isEmpty());
}

void ImageDownloaderTest::writesToOwnFoldersOnly()
{
    QVERIFY(::chmod(QFile::encodeName(m_folder).constData(), 0777) == 0);
    QCOMPARE(download(m_folder + "/a.png", "new"), 0);
    struct stat status = {};
    QVERIFY(::stat(QFile::encodeName(m_folder).constData(), &status) == 0);
    QVERIFY2((status.st_mode & 022) == 0, "others could exchange the files");

    if (::geteuid() != 0)
        QSKIP("needs root to make another user's folder");
    const QString inner = m_folder + "/inner";
    QVERIFY(QDir().mkpath(inner));
    QVERIFY(::chown(QFile::encodeName(m_folder).constData(), 1, 1) == 0);
    QCOMPARE(download(m_folder + "/b.png", "new"), 0);
    QCOMPARE(download(inner + "/b.png", "new"), 0);
    QVERIFY(!QFile::exists(m_folder + "/b.png"));
    QVERIFY(QDir(inner).isEmpty());
}

void ImageDownloaderTest::boundsWhatItReads_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("announced") << "gigabyte";
    QTest::newRow("endless") << "endless";
}

void ImageDownloaderTest::boundsWhatItReads()
{
    QFETCH(QString, path);
    const qint64 before = peakMemory();
    QCOMPARE(download(m_folder + "/a.png", path), -1);
    QCOMPARE(entries(), QStringList());
#ifndef __SANITIZE_ADDRESS__
    QVERIFY(peakMemory() - before < 4 * ImageDownloader::maxBytes);
#else
    Q_UNUSED(before)
#endif
}

void ImageDownloaderTest::saysNothingAfterStop()
{
    ImageDownloader stopped(m_folder + "/a.png", m_server.base() + "silent", nullptr);
    auto *deleted = new ImageDownloader(m_folder + "/b.png", m_server.base() + "silent", nullptr);
    QSignalSpy requested(&m_server, &HttpServer::requested);
    QSignalSpy abandoned(&m_server, &HttpServer::abandoned);
    QSignalSpy stoppedFinished(&stopped, &ImageDownloader::sigDownloadFinish);
    QSignalSpy deletedFinished(deleted, &ImageDownloader::sigDownloadFinish);
    stopped.start();
    deleted->start();
    QTRY_COMPARE(requested.count(), 2);
    stopped.stop();
    delete deleted;
    QTRY_COMPARE(abandoned.count(), 2);
    QCOMPARE(stoppedFinished.count(), 0);
    QCOMPARE(deletedFinished.count(), 0);
    QCOMPARE(entries(), QStringList());

    ImageDownloader givenUp(m_folder + "/c.png", m_server.base() + "silent", nullptr);
    QSignalSpy finished(&givenUp, &ImageDownloader::sigDownloadFinish);
    givenUp.start();
    QVERIFY(requested.wait());
    givenUp.giveUp();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(1).toInt(), -1);
}

void ImageDownloaderTest::refusesPipes()
{
    const QString pipe = m_folder + "/pipe";
    QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
    QCOMPARE(download(m_folder + "/a.png", QUrl::fromLocalFile(pipe).toString()), -1);
}

QTEST_MAIN(ImageDownloaderTest)
#include "image-downloader-test.moc"
