#include "support/http-server.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/help-window.h>
#include <kovakit-qt/widgets/html-text-browser.h>

#include <QTcpSocket>
#include <QtTest>

namespace {

// "<p>unpacked</p>", and what could as well be gigabytes of zeros.
QByteArray packed()
{
    return QByteArray::fromHex(
        "1f8b08000000000002ffb329b02bcd2b484cce4e4db1d12fb0030017d087ce0f000000");
}

} // namespace

// Bodies that are short on the way and long to read.
class HostileBodyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void compressedBodies();
    void bodiesInManyPieces();

private:
    void answerWith(const QByteArray &header, const QByteArray &body);
    [[nodiscard]] QByteArray downloaded() const;
    [[nodiscard]] QString shown() const;

    std::unique_ptr<HttpServer> m_server;
};

void HostileBodyTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    setUpHost();
    writeScratchFile("help/enu/page.html", "<p>offline</p>");
}

void HostileBodyTest::init()
{
    m_server = std::make_unique<HttpServer>();
    HelpWindow::setKnowledgeBaseHost(m_server->base());
}

void HostileBodyTest::answerWith(const QByteArray &header, const QByteArray &body)
{
    for (const char *path : {"/picture", "/cgi/knowledgebase/"}) {
        m_server->handle(path, [header, body](QTcpSocket *socket) {
            socket->write("HTTP/1.1 200 OK\r\nConnection: close\r\n" + header + "\r\n\r\n" + body);
            socket->disconnectFromHost();
        });
    }
}

QByteArray HostileBodyTest::downloaded() const
{
    QFile file(scratchFolder() + "/picture");
    ImageDownloader download(file.fileName(), m_server->base() + "picture", nullptr);
    QSignalSpy ended(&download, &ImageDownloader::sigDownloadFinish);
    download.start();
    if (!ended.wait(20000) || ended.at(0).at(1) != 0 || !file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

QString HostileBodyTest::shown() const
{
    const HelpWindow window({"enu", scratchFolder() + "/help", "page.html", "", ""}, nullptr);
    const auto *browser = window.findChild<HtmlTextBrowser *>();
    QSignalSpy changed(browser, &QTextEdit::textChanged);
    changed.wait(20000);
    return browser->toPlainText();
}

void HostileBodyTest::compressedBodies()
{
    answerWith("Content-Encoding: gzip\r\nContent-Length: " + QByteArray::number(packed().size()),
               packed());
    QCOMPARE(downloaded(), packed());
    QCOMPARE(shown(), QString("offline"));

    answerWith("Content-Encoding: Identity\r\nContent-Length: 1", "x");
    QCOMPARE(downloaded(), QByteArray("x"));
    QCOMPARE(shown(), QString("x"));
}

// Each byte is a chunk of its own.
void HostileBodyTest::bodiesInManyPieces()
{
    constexpr int count = 200000;
    answerWith("Transfer-Encoding: chunked",
               QByteArray("1\r\n \r\n").repeated(count - 4) + "4\r\nlast\r\n0\r\n\r\n");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(downloaded(), QByteArray(count - 4, ' ') + "last");
    QCOMPARE(shown().trimmed(), QString("last"));
    QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(HostileBodyTest)
#include "hostile-body-test.moc"
