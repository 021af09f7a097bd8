// SPDX-License-Identifier: MIT

#include "support/http-server.h"
#include "support/pictures.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/html-text-browser.h>

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QImageWriter>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

QString pictureFolder()
{
    return QDir::tempPath() + "/kovaline_help/image";
}

QString pictures(int from, int count)
{
    QString text;
    for (int i = from; i < from + count; ++i)
        text += QString("<p><img src=\"../image/%1.png\"></p>").arg(i);
    return text;
}

QString pathOf(int picture)
{
    return QString("/image/%1.png").arg(picture);
}

// A picture of one colour in ten scans, the last of them @p times more.
QByteArray jpegFile(int side, int times)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpg");
    writer.setProgressiveScanWrite(true);
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::red);
    writer.write(image);
    const int lastScan = bytes.lastIndexOf("\xFF\xDA");
    const int end = bytes.size() - 2;
    return bytes.left(end) + bytes.mid(lastScan, end - lastScan).repeated(times) + bytes.mid(end);
}

// With @p chunks texts in it that would unfold to eight million characters each.
QByteArray pngFileWithTexts(int chunks)
{
    constexpr int header = 33;
    const QByteArray chunk =
        QByteArray::fromHex("00002000") + "zTXt" + QByteArray(0x2000, 'x') + "none";
    return pngFile({40, 30}).insert(header, chunk.repeated(chunks));
}

// One that nobody writes to: who opens it waits for ever.
QString makePipe(const QString &path)
{
    return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0 ? path : QString();
}

} // namespace

class HtmlTextBrowserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TMPDIR", QFile::encodeName(scratchFolder())); }
    void init();
    void showsTextWithoutBaseAsItIs();
    void downloadsEachSourceOnce();
    void findsWhatIsSpelledOtherwise();
    void showsWhatArrives();
    void gathersArrivals();
    void limitsDownloadsAndKeepsTheirOrder();
    void keepsConnections_data();
    void keepsConnections();
    void silentDownloadsGiveWay();
    void beginsRepeatedDownloadsAnew();
    void stopsWithTheBrowser();
    void showsFilesOfSearchPathsOnly();
    void showsPicturesWithinLimits();
    void refusesPicturesThatTakeLong();
    void remembersWhatIsNoPicture();
    void followsLinksInsideSearchPaths();
    void leavesForeignPictureFolder_data();
    void leavesForeignPictureFolder();

private:
    // Shows a page with a base, whose pictures are @p body's.
    void show(const QString &body)
    {
        m_browser->setText("<html><base href=\"" + m_server->base() + "x/\">" + body);
    }
    [[nodiscard]] QSize shownSize(const QString &name) const
    {
        const QVariant picture =
            m_browser->document()->resource(QTextDocument::ImageResource, QUrl(name));
        return picture.value<QPixmap>().size();
    }
    int countPixels(const QColor &color);
    void answerPictures(int count)
    {
        for (int i = 0; i < count; ++i)
            m_server->answer(pathOf(i), pngFile(m_size));
    }

    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<HtmlTextBrowser> m_browser;
    const QSize m_size{40, 30};
    const QSize m_placeholder{16, 16};
};

void HtmlTextBrowserTest::init()
{
    QDir(QDir::tempPath() + "/kovaline_help").removeRecursively();
    m_server = std::make_unique<HttpServer>();
    m_browser = std::make_unique<HtmlTextBrowser>(nullptr);
    m_browser->resize(400, 300);
    m_browser->show();
}

int HtmlTextBrowserTest::countPixels(const QColor &color)
{
    const QImage image = m_browser->viewport()->grab().toImage();
    const auto *pixels = reinterpret_cast<const QRgb *>(image.constBits());
    const qsizetype count = image.sizeInBytes() / qsizetype(sizeof(QRgb));
    return int(std::count(pixels, pixels + count, color.rgb()));
}

void HtmlTextBrowserTest::showsTextWithoutBaseAsItIs()
{
    for (const QString &text :
         QStringList{"base href, no tags: src=\"x\"", "<p>a <img src=\"../image/1.png\"></p>",
                     "<BASE HREF=\"http://127.0.0.1/\"><img src=\"1.png\">",
                     "<p>a <base href=\"http://127.0.0.1/"}) {
        m_browser->setText(text);
        QTextEdit plain;
        plain.setText(text);
        QCOMPARE(m_browser->toPlainText(), plain.toPlainText());
        QCOMPARE(m_browser->searchPaths(), QStringList());
        QVERIFY(!QFile::exists(pictureFolder()));
    }
}

void HtmlTextBrowserTest::downloadsEachSourceOnce()
{
    m_browser->setSearchPaths({"mine"});
    m_browser->setText("<img src=\"early.png\"><base href=\"" + m_server->base()
                       + "x/\"><img alt=\"a\" src=\"../image/1.png\"><img src=\"2.png\">"
                         "<img src=\"../image/1.png\"><IMG SRC=\"3.png\">"
                         "<img src=\"deep/4.png?q=1\"><img src='5.png'><img src=\"6.png");
    QTRY_COMPARE(m_server->requests().size(), 3);
    QTest::qWait(20);
    QStringList requests = m_server->requests();
    requests.sort();
    QCOMPARE(requests, (QStringList{"/image/1.png", "/x/2.png", "/x/deep/4.png?q=1"}));
    show("the same folder again");
    QCOMPARE(m_browser->searchPaths(), (QStringList{pictureFolder(), pictureFolder(), "mine"}));
}

void HtmlTextBrowserTest::findsWhatIsSpelledOtherwise()
{
    for (const QString &path : QStringList{"/image/a%20b.png", "/x/c%20d.png", "/x/e.png",
                                           "/x/%C3%A4.png", "/x/100%25.png"})
        m_server->answer(path, pngFile({30, 7}));
    show("<img src=\"../image/a%20b.png\"><img src=\"c d.png\"><img src=\"e.png?x=1&amp;y=2\">"
         "<img src=\"ä.png\"><img src=\"100%.png\">");
    QTRY_COMPARE(countPixels(Qt::red), 5 * 30 * 7);
}

void HtmlTextBrowserTest::showsWhatArrives()
{
    const auto arrives = [this](const QByteArray &content) {
        m_server->answer(pathOf(1), content);
        show(pictures(1, 1));
    };
    const QString name = "../image/1.png";
    arrives(pngFile({50, 20}, Qt::red));
    QCOMPARE(shownSize(name), m_placeholder);
    QTRY_COMPARE(countPixels(Qt::red), 50 * 20);

    arrives(pngFile({120, 90}, Qt::blue));
    QCOMPARE(countPixels(Qt::red), 50 * 20);
    QTRY_COMPARE(countPixels(Qt::blue), 120 * 90);
    QCOMPARE(countPixels(Qt::red), 0);

    arrives("this is no picture");
    QTRY_COMPARE(shownSize(name), m_placeholder);
}

void HtmlTextBrowserTest::gathersArrivals()
{
    constexpr int count = 150;
    answerPictures(count);
    show(pictures(0, count));
    const auto *layout = m_browser->document()->documentLayout();
    layout->documentSize();
    QSignalSpy layouts(layout, &QAbstractTextDocumentLayout::documentSizeChanged);
    for (const char *name : {"../image/149.png", "../image/148.png"})
        QTRY_COMPARE_WITH_TIMEOUT(shownSize(name), m_size, 60000);
    QVERIFY2(layouts.count() < count / 2, qPrintable(QString::number(layouts.count())));
}

void HtmlTextBrowserTest::limitsDownloadsAndKeepsTheirOrder()
{
    constexpr int most = HtmlTextBrowser::maxDownloads;
    m_server->hold();
    show(pictures(0, 100));
    QTRY_COMPARE(m_server->requests().size(), most);
    // What a newer text shows goes first.
    show(pictures(100, 1));
    m_server->release();
    QTRY_COMPARE(m_server->requests().size(), most + 1);
    QCOMPARE(m_server->requests().last(), pathOf(100));

    connect(m_server.get(), &HttpServer::requested, this,
            [this] { QTimer::singleShot(1, m_server.get(), [this] { m_server->release(); }); });
    m_server->release(most);
    QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), 101, 60000);
    QCOMPARE(m_server->mostOpenRequests(), most);
    for (int i = 0; i < 100; ++i) {
        const int at = m_server->requests().indexOf(pathOf(i));
        QVERIFY2(qAbs(at - i) < 30, qPrintable(QString("%1 was number %2").arg(i).arg(at)));
    }
}

void HtmlTextBrowserTest::keepsConnections_data()
{
    QTest::addColumn<int>("answersEach");
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<int>("connections");
    const QByteArray good = "200 OK";
    QTest::newRow("kept") << 30 << good << int(HtmlTextBrowser::maxDownloads);
    QTest::newRow("closed without a word") << 2 << good << 15;
    QTest::newRow("not after errors") << 30 << QByteArray("404 Not Found") << 30;
}

// A server that speaks HTTP as most do: a connection carries several requests.
void HtmlTextBrowserTest::keepsConnections()
{
    QFETCH(int, answersEach);
    QFETCH(QByteArray, status);
    QFETCH(int, connections);
    const QByteArray answer =
        HttpServer::response(pngFile(m_size), status).replace("Connection: close\r\n", "");
    int accepted = 0;
    int answered = 0;
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connect(&server, &QTcpServer::newConnection, this, [&] {
        QTcpSocket *socket = server.nextPendingConnection();
        ++accepted;
        connect(socket, &QTcpSocket::readyRead, this, [&, socket, left = answersEach]() mutable {
            socket->readAll();
            socket->write(answer);
            ++answered;
            if (--left == 0)
                socket->disconnectFromHost();
        });
    });
    m_browser->setText(
        QString("<html><base href=\"http://127.0.0.1:%1/x/\">").arg(server.serverPort())
        + pictures(0, 30));
    QTRY_COMPARE(answered, 30);
    const QSize expected = status.startsWith("200") ? m_size : m_placeholder;
    for (int i = 0; i < 30; ++i)
        QTRY_COMPARE(shownSize(".." + pathOf(i)), expected);
    QVERIFY2(qAbs(accepted - connections) <= connections / 5,
             qPrintable(QString::number(accepted)));
}

void HtmlTextBrowserTest::silentDownloadsGiveWay()
{
    constexpr int most = HtmlTextBrowser::maxDownloads;
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    show(pictures(0, most + 1));
    QTRY_COMPARE(m_server->requests().size(), most);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(abandoned.wait(20000));
    QVERIFY(timer.elapsed() > 9000 && timer.elapsed() < 15000);
    QTRY_COMPARE(m_server->requests().size(), most + 1);
    QTest::qWait(1500);
    QVERIFY2(m_server->openRequests() > 0, "nobody waits any more");
}

void HtmlTextBrowserTest::beginsRepeatedDownloadsAnew()
{
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    answerPictures(1);
    show(pictures(0, 1));
    QTRY_COMPARE(m_server->requests().size(), 1);
    show(pictures(0, 1));
    QTRY_COMPARE(abandoned.count(), 1);
    QTRY_COMPARE(m_server->requests().size(), 2);
    m_server->release(2);
    QTRY_COMPARE(shownSize("../image/0.png"), m_size);

    m_browser->slotDownloadFinished("never begun", -1);
    QTest::qWait(60);
    QCOMPARE(shownSize("../image/0.png"), m_size);
}

void HtmlTextBrowserTest::stopsWithTheBrowser()
{
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    show(pictures(0, 10));
    QTRY_COMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
    m_browser.reset();
    QTRY_COMPARE(abandoned.count(), HtmlTextBrowser::maxDownloads);
    QTest::qWait(20);
    QCOMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
}

void HtmlTextBrowserTest::showsFilesOfSearchPathsOnly()
{
    const QByteArray picture = pngFile(m_size);
    const QString outside = writeScratchFile("outside.png", picture);
    const QString pages = QFileInfo(writeScratchFile("pages/in.png", picture)).path();
    const auto inPages = [&pages](const QString &name) { return pages + '/' + name; };
    writeScratchFile("pages/sub/in.png", picture);
    writeScratchFile("pages/half.png", picture.left(40));
    writeScratchFile("pages/drawing.png", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"40\" "
                                          "height=\"30\"><rect width=\"40\" height=\"30\"/></svg>");
    // An icon of 11 by 13 pixels, if its header is to be believed.
    writeScratchFile("pages/icon.png",
                     QByteArray::fromHex("0000010001000b0d00000100200000ffff0016000000") + picture);
    const QStringList formats = {"a.jpg", "a.bmp", "a.xpm", "a.xbm", "a.ppm"};
    for (const QString &name : formats)
        QVERIFY(QImage(m_size, QImage::Format_Mono).save(inPages(name)));
    QVERIFY(QFile::link(outside, inPages("link.png")));
    QVERIFY(QFile::link(inPages("in.png"), inPages("good-link.png")));
    QVERIFY(QFile::link(scratchFolder(), inPages("folder-link")));
    QVERIFY(QFile::link("/dev/zero", inPages("device.png")));
    const QString pipe = makePipe(scratchFolder() + "/pipe");

    const QStringList shown = QString("in.png sub/../sub/in.png good-link.png").split(' ')
                            + QStringList{inPages("in.png"), "file://" + inPages("in.png"),
                                          "data:image/png;base64," + picture.toBase64()};
    const QStringList refused =
        QString("../outside.png link.png folder-link/outside.png device.png "
                "sub drawing.png icon.png half.png")
            .split(' ')
        + QStringList{outside,        "file://" + outside,           pipe,
                      "data:" + pipe, makePipe(inPages("pipe.png")), QString()};
    m_browser->setSearchPaths({pages});
    for (const QString &source : formats + shown + refused) {
        m_browser->setText(QString("<html><head><link rel=\"stylesheet\" type=\"text/css\" "
                                   "href=\"%1\"></head><p><img src=\"%1\"></p>")
                               .arg(source));
        m_browser->grab();
        QVERIFY2(shownSize(source) == (refused.contains(source) ? m_placeholder : m_size),
                 qPrintable(source));
    }

    // What a page calls its server must not open the disk either.
    m_browser->setSearchPaths({});
    m_browser->setText("<html><base href=\"file://" + inPages("\"><img src=\"in.png\">"));
    QTest::qWait(60);
    QCOMPARE(shownSize("in.png"), m_placeholder);
    QVERIFY(QDir(pictureFolder()).isEmpty());
}

void HtmlTextBrowserTest::showsPicturesWithinLimits()
{
    const QString folder = QFileInfo(writeScratchFile("large/last.png", pngFile(m_size))).path();
    const auto save = [&folder](const QString &name, const QSize &size) {
        QVERIFY(QImage(size, QImage::Format_Mono).save(folder + '/' + name));
    };
    const QSize largest(4096, HtmlTextBrowser::maxPicturePixels / 4096);
    save("beyond.png", largest + QSize(0, 1));
    for (const int excess : {0, 1}) {
        const QString file = writeScratchFile(QString("large/%1.png").arg(excess), pngFile(m_size));
        QVERIFY(QFile::resize(file, ImageDownloader::maxBytes + excess));
    }
    const QString themePictures = themeFolder() + "/images";
    m_browser->setSearchPaths({folder, themePictures});
    m_browser->setText("<p>");
    QCOMPARE(shownSize("processing.gif"), QImage(themePictures + "/processing.gif").size());
    QCOMPARE(shownSize("0.png"), m_size);
    QCOMPARE(shownSize("1.png"), m_placeholder);
    QCOMPARE(shownSize("beyond.png"), m_placeholder);

    // What is read again takes no more of the page's share.
    m_browser->setText("<p>");
    const int count = int(HtmlTextBrowser::maxPagePixels / HtmlTextBrowser::maxPicturePixels);
    for (int i = 0; i < 2 * count; ++i) {
        const QString name = QString("large%1.png").arg(i % count);
        save(name, largest);
        QCOMPARE(shownSize(name), largest);
    }
    QCOMPARE(shownSize("last.png"), m_placeholder);
    m_browser->setText("<p>");
    QCOMPARE(shownSize("last.png"), m_size);
}

void HtmlTextBrowserTest::refusesPicturesThatTakeLong()
{
    const auto shown = [this](const QByteArray &bytes) {
        m_browser->setText("<p>");
        const QSize size = shownSize("data:image/any;base64," + bytes.toBase64());
        m_browser->setSearchPaths({QFileInfo(writeScratchFile("slow/any.png", bytes)).path()});
        m_browser->setText("<p>");
        return shownSize("any.png") == size ? size : QSize();
    };
    QCOMPARE(shown(jpegFile(2048, 0)), QSize(2048, 2048));
    QCOMPARE(shown(jpegFile(2048, 300)), m_placeholder);
    QCOMPARE(shown(jpegFile(64, 300)), QSize(64, 64));
    QCOMPARE(shown(pngFileWithTexts(1)), m_size);
    QCOMPARE(shown(pngFileWithTexts(30)), m_placeholder);
    const QByteArray drawing = "/* XPM */\nstatic char *x[] = {\"2 1 1 1\", \"a c red\", \"aa\"};";
    QCOMPARE(shown(drawing), QSize(2, 1));
    QCOMPARE(shown(drawing + QByteArray(8000000, ' ')), m_placeholder);
    QCOMPARE(shown("P3 2 1 255 1 2 3 4 5 6 " + QByteArray(8000000, ' ')), m_placeholder);
}

void HtmlTextBrowserTest::remembersWhatIsNoPicture()
{
    const QSize large(3000, 3000);
    const QByteArray half = pngFile({4000, 4000}).left(500);
    const QString folder = QFileInfo(writeScratchFile("halves/last.png", pngFile(large))).path();
    m_browser->setSearchPaths({folder});

    // By the names of one file, which take no time but for the first.
    writeScratchFile("halves/half.png", half);
    m_browser->setText("<p>");
    for (int i = 0; i < 40; ++i)
        QCOMPARE(shownSize(QString("./").repeated(i) + "half.png"), m_placeholder);
    QCOMPARE(shownSize("last.png"), large);

    // Of files that differ, each one takes its share.
    m_browser->setText("<p>");
    for (int i = 0; i < 40; ++i) {
        const QString name = QString("half%1.png").arg(i);
        writeScratchFile("halves/" + name, half + char(i));
        QCOMPARE(shownSize(name), m_placeholder);
    }
    QCOMPARE(shownSize("last.png"), m_placeholder);
}

void HtmlTextBrowserTest::followsLinksInsideSearchPaths()
{
    writeScratchFile("site/style.css", "p { color: #ff0000 }");
    writeScratchFile("site/sub/next.html", "<p>nächste Seite <img src=\"p.png\"></p>");
    writeScratchFile("site/sub/p.png", pngFile({21, 22}, Qt::blue));
    writeScratchFile("site/bad.html", QByteArray("<table><tr><td>").repeated(1000));
    writeScratchFile("secret.html", "<p>secret</p>");
    m_browser->setSearchPaths({scratchFolder() + "/site"});
    m_browser->setText("<html><head><link rel=\"stylesheet\" type=\"text/css\" "
                       "href=\"style.css\"></head><body><p>first</p></body></html>");
    QCOMPARE(m_browser->document()->begin().begin().fragment().charFormat().foreground().color(),
             QColor(Qt::red));

    m_browser->setSource(QUrl("sub/next.html"));
    QVERIFY(m_browser->toPlainText().startsWith("nächste Seite"));
    QCOMPARE(countPixels(Qt::blue), 21 * 22);
    m_browser->reload();
    QCOMPARE(countPixels(Qt::blue), 21 * 22);

    m_browser->setSource(QUrl("../bad.html"));
    m_browser->setSource(QUrl("bad.html"));
    QVERIFY(m_browser->toPlainText().contains("<table>"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No document for"));
    m_browser->setSource(QUrl::fromLocalFile(scratchFolder() + "/secret.html"));
    QVERIFY(!m_browser->toPlainText().contains("secret"));
}

void HtmlTextBrowserTest::leavesForeignPictureFolder_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("link") << true;
    // It takes root to make another user's folder.
    if (::geteuid() == 0)
        QTest::newRow("of another user") << false;
}

// Another user has made the folder before, with a page and a picture that this user has not asked
// for.
void HtmlTextBrowserTest::leavesForeignPictureFolder()
{
    QFETCH(bool, isLink);
    const QString folder = QDir::tempPath() + "/kovaline_help";
    const QString name = isLink ? "precious" : "kovaline_help";
    const QString known = writeScratchFile(name + "/image/0.png", pngFile({31, 32}));
    writeScratchFile(name + "/image/planted.png", pngFile({31, 32}));
    QVERIFY(isLink ? QFile::link(scratchFolder() + "/precious", folder)
                   : ::chown(QFile::encodeName(folder).constData(), 1, 1) == 0);

    answerPictures(1);
    show(pictures(0, 1) + "<img src=\"planted.png\">");
    QTRY_COMPARE(shownSize("../image/0.png"), m_size);
    QCOMPARE(shownSize("planted.png"), m_placeholder);
    QCOMPARE(QImage(known).size(), QSize(31, 32));

    // Neither may a host's own search path lead there.
    m_browser->setSearchPaths({folder + "/image"});
    m_browser->setText("<p><img src=\"planted.png\"></p>");
    QCOMPARE(shownSize("planted.png"), m_placeholder);
    QFile::remove(folder);
}

QTEST_MAIN(HtmlTextBrowserTest)
#include "html-text-browser-test.moc"
