// SPDX-License-Identifier: MIT

#include "support/http-server.h"
#include "support/pictures.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/html-text-browser.h>

#include <QAbstractTextDocumentLayout>
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

void makePipe(const QString &path)
{
    QVERIFY(::mkfifo(QFile::encodeName(path).constData(), 0600) == 0);
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
    void showsTheNewTextFirst();
    void beginsRepeatedDownloadsAnew();
    void stopsWithTheBrowser();
    void showsFilesOfSearchPathsOnly();
    void showsPicturesWithinLimits();
    void followsLinksInsideSearchPaths();
    void leavesForeignPictureFolder_data();
    void leavesForeignPictureFolder();

private:
    [[nodiscard]] QString base() const
    {
        return "<html><base href=\"" + m_server->base() + "x/\">";
    }
    [[nodiscard]] QSize shownSize(const QString &name) const
    {
        const QVariant picture =
            m_browser->document()->resource(QTextDocument::ImageResource, QUrl(name));
        return picture.value<QPixmap>().size();
    }
    int countPixels(const QColor &color);
    void answerPictures(int count, const QSize &size)
    {
        for (int i = 0; i < count; ++i)
            m_server->answer(pathOf(i), pngFile(size));
    }

    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<HtmlTextBrowser> m_browser;
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
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == color.rgb();
    }
    return count;
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
    const QString text = "<img src=\"early.png\">" + base()
                       + "<img alt=\"a\" src=\"../image/1.png\"><img src=\"2.png\">"
                         "<img src=\"../image/1.png\"><IMG SRC=\"3.png\">"
                         "<img src=\"deep/4.png?q=1\"><img src='5.png'><img src=\"6.png";
    m_browser->setSearchPaths({"mine"});
    m_browser->setText(text);
    QTRY_COMPARE(m_server->requests().size(), 3);
    QTest::qWait(20);
    QStringList requests = m_server->requests();
    requests.sort();
    QCOMPARE(requests, (QStringList{"/image/1.png", "/x/2.png", "/x/deep/4.png?q=1"}));
    QCOMPARE(m_browser->searchPaths(), (QStringList{pictureFolder(), "mine"}));
    m_browser->setText(text);
    QCOMPARE(m_browser->searchPaths(), (QStringList{pictureFolder(), pictureFolder(), "mine"}));
}

void HtmlTextBrowserTest::findsWhatIsSpelledOtherwise()
{
    const QPair<const char *, const char *> pathsBySource[] = {
        {"../image/a%20b.png", "/image/a%20b.png"},
        {"c d.png", "/x/c%20d.png"},
        {"e.png?x=1&amp;y=2", "/x/e.png"},
        {"ä.png", "/x/%C3%A4.png"},
        {"100%.png", "/x/100%25.png"}};
    QString text = base();
    for (const auto &[source, path] : pathsBySource) {
        text += QString("<img src=\"%1\">").arg(source);
        m_server->answer(path, pngFile({30, 7}));
    }
    m_browser->setText(text);
    QTRY_COMPARE(countPixels(Qt::red), 5 * 30 * 7);
}

void HtmlTextBrowserTest::showsWhatArrives()
{
    const QString name = "../image/1.png";
    m_server->answer(pathOf(1), pngFile({50, 20}, Qt::red));
    m_browser->setText(base() + pictures(1, 1));
    QCOMPARE(shownSize(name), m_placeholder);
    m_browser->grab();
    QTRY_COMPARE(countPixels(Qt::red), 50 * 20);

    m_server->answer(pathOf(1), pngFile({120, 90}, Qt::blue));
    m_browser->setText(base() + pictures(1, 1));
    QCOMPARE(countPixels(Qt::red), 50 * 20);
    QTRY_COMPARE(countPixels(Qt::blue), 120 * 90);
    QCOMPARE(countPixels(Qt::red), 0);

    m_server->answer(pathOf(1), "this is no picture");
    m_browser->setText(base() + pictures(1, 1));
    QTRY_COMPARE(shownSize(name), m_placeholder);
}

void HtmlTextBrowserTest::gathersArrivals()
{
    constexpr int count = 150;
    answerPictures(count, {40, 40});
    m_browser->setText(base() + pictures(0, count));
    const auto *layout = m_browser->document()->documentLayout();
    layout->documentSize();
    QSignalSpy layouts(layout, &QAbstractTextDocumentLayout::documentSizeChanged);
    QElapsedTimer timer;
    timer.start();
    for (const char *name : {"../image/149.png", "../image/148.png"})
        QTRY_COMPARE_WITH_TIMEOUT(shownSize(name), QSize(40, 40), 60000);
    // One for each 40 milliseconds, and each may report its size twice.
    QVERIFY2(layouts.count() <= 2 * (timer.elapsed() / 40 + 2),
             qPrintable(QString::number(layouts.count())));
    QVERIFY(layouts.count() < count / 2);
}

void HtmlTextBrowserTest::limitsDownloadsAndKeepsTheirOrder()
{
    constexpr int count = 200;
    m_server->hold();
    connect(m_server.get(), &HttpServer::requested, this,
            [this] { QTimer::singleShot(1, m_server.get(), [this] { m_server->release(); }); });
    m_browser->setText(base() + pictures(0, count));
    QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), count, 60000);
    QCOMPARE(m_server->mostOpenRequests(), HtmlTextBrowser::maxDownloads);
    for (int i = 0; i < count; ++i) {
        const int at = m_server->requests().indexOf(pathOf(i));
        QVERIFY2(qAbs(at - i) < 50, qPrintable(QString("%1 was number %2").arg(i).arg(at)));
    }
}

void HtmlTextBrowserTest::keepsConnections_data()
{
    QTest::addColumn<int>("answersEach");
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<int>("connections");
    const int all = 30;
    QTest::newRow("kept") << all << QByteArray("200 OK") << int(HtmlTextBrowser::maxDownloads);
    QTest::newRow("closed without a word") << 2 << QByteArray("200 OK") << all / 2;
    QTest::newRow("not after errors") << all << QByteArray("404 Not Found") << all;
}

// A server that speaks HTTP as most do: a connection carries several requests.
void HtmlTextBrowserTest::keepsConnections()
{
    QFETCH(int, answersEach);
    QFETCH(QByteArray, status);
    QFETCH(int, connections);
    const QByteArray picture = pngFile({40, 30});
    const QByteArray answer = "HTTP/1.1 " + status + "\r\nSet-Cookie: a=b\r\nContent-Length: "
                            + QByteArray::number(picture.size()) + "\r\n\r\n" + picture;
    int accepted = 0;
    int answered = 0;
    QByteArray cookies;
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connect(&server, &QTcpServer::newConnection, this, [&] {
        QTcpSocket *socket = server.nextPendingConnection();
        ++accepted;
        connect(socket, &QTcpSocket::readyRead, this, [&, socket, left = answersEach]() mutable {
            const QByteArray request = socket->readAll();
            if (request.toLower().contains("\r\ncookie:"))
                cookies = request;
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
    const QSize expected = status.startsWith("200") ? QSize(40, 30) : m_placeholder;
    for (int i = 0; i < 30; ++i)
        QTRY_COMPARE(shownSize(QString("../image/%1.png").arg(i)), expected);
    QVERIFY2(qAbs(accepted - connections) <= connections / 5,
             qPrintable(QString::number(accepted)));
    QCOMPARE(cookies, QByteArray());
}

void HtmlTextBrowserTest::silentDownloadsGiveWay()
{
    constexpr int most = HtmlTextBrowser::maxDownloads;
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    m_browser->setText(base() + pictures(0, most + 1));
    QTRY_COMPARE(m_server->requests().size(), most);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(abandoned.wait(20000));
    QVERIFY(timer.elapsed() > 9000 && timer.elapsed() < 15000);
    QTRY_COMPARE(m_server->requests().size(), most + 1);
    QTest::qWait(1500);
    QVERIFY2(m_server->openRequests() > 0, "nobody waits any more");
}

void HtmlTextBrowserTest::showsTheNewTextFirst()
{
    m_server->hold();
    m_browser->setText(base() + pictures(0, 20));
    QTRY_COMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
    m_browser->setText(base() + pictures(100, 1));
    m_server->release();
    QTRY_COMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads + 1);
    QCOMPARE(m_server->requests().last(), pathOf(100));
    connect(m_server.get(), &HttpServer::requested, this, [this] { m_server->release(); });
    m_server->release(HtmlTextBrowser::maxDownloads);
    QTRY_COMPARE(m_server->requests().size(), 21);
}

void HtmlTextBrowserTest::beginsRepeatedDownloadsAnew()
{
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    answerPictures(1, {10, 10});
    for (int time = 1; time <= 2; ++time) {
        m_browser->setText(base() + pictures(0, 1));
        QTRY_COMPARE(m_server->requests().size(), time);
    }
    QTRY_COMPARE(abandoned.count(), 1);
    m_server->release(2);
    QTRY_COMPARE(shownSize("../image/0.png"), QSize(10, 10));

    m_browser->slotDownloadFinished("never begun", -1);
    QTest::qWait(60);
    QCOMPARE(shownSize("../image/0.png"), QSize(10, 10));
}

void HtmlTextBrowserTest::stopsWithTheBrowser()
{
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    answerPictures(10, {10, 10});
    m_browser->setText(base() + pictures(0, 10));
    QTRY_COMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
    m_browser.reset();
    QTRY_COMPARE(abandoned.count(), HtmlTextBrowser::maxDownloads);
    m_server->release(10);
    QTest::qWait(50);
    QCOMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
    QVERIFY(QDir(pictureFolder()).isEmpty());
}

void HtmlTextBrowserTest::showsFilesOfSearchPathsOnly()
{
    const QByteArray picture = pngFile({11, 13});
    const QString pages = QFileInfo(writeScratchFile("pages/in.png", picture)).path();
    const QString outside = writeScratchFile("outside.png", picture);
    const QString pipe = scratchFolder() + "/pipe";
    writeScratchFile("pages/sub/in.png", picture);
    writeScratchFile("pages/huge.png", hugePngFile());
    writeScratchFile("pages/drawing.png", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"11\" "
                                          "height=\"13\"><rect width=\"11\" height=\"13\"/></svg>");
    // An icon of 11 by 13 pixels, if its header is to be believed.
    writeScratchFile("pages/icon.png",
                     QByteArray::fromHex("0000010001000b0d00000100200000ffff0016000000") + picture);
    writeScratchFile("pages/empty.png", "");
    writeScratchFile("pages/half.png", picture.left(40));
    QImage image(11, 13, QImage::Format_Mono);
    const QStringList formats = {"a.jpg", "a.bmp", "a.xpm", "a.xbm", "a.ppm"};
    for (const QString &name : formats)
        QVERIFY(image.save(pages + '/' + name));
    QFile::link(outside, pages + "/link.png");
    QFile::link(pages + "/in.png", pages + "/good-link.png");
    QFile::link(scratchFolder(), pages + "/folder-link");
    QFile::link("/dev/zero", pages + "/device.png");
    makePipe(pages + "/pipe.png");
    makePipe(pipe);

    const QStringList shown = {"in.png",
                               "sub/../sub/in.png",
                               "good-link.png",
                               pages + "/in.png",
                               "file://" + pages + "/in.png",
                               "data:image/png;base64," + QString::fromLatin1(picture.toBase64())};
    const QStringList refused = {"../outside.png",
                                 outside,
                                 "file://" + outside,
                                 "link.png",
                                 "folder-link/outside.png",
                                 "device.png",
                                 "pipe.png",
                                 pipe,
                                 "data:" + pipe,
                                 "/proc/kmsg",
                                 "sub",
                                 "huge.png",
                                 "drawing.png",
                                 "icon.png",
                                 "empty.png",
                                 "half.png",
                                 QString()};
    m_browser->setSearchPaths({pages});
    for (const QString &source : formats + shown + refused) {
        m_browser->setText(QString("<html><head><link rel=\"stylesheet\" type=\"text/css\" "
                                   "href=\"%1\"></head><p><img src=\"%1\"></p>")
                               .arg(source));
        m_browser->grab();
        QVERIFY2(shownSize(source) == (refused.contains(source) ? m_placeholder : QSize(11, 13)),
                 qPrintable(source));
    }

    // What a page calls its server must not open the disk either.
    m_browser->setSearchPaths({});
    m_browser->setText("<html><base href=\"file://" + pages
                       + "/\"><img src=\"in.png\">"
                         "<img src=\"pipe.png\">");
    QTest::qWait(60);
    QCOMPARE(shownSize("in.png"), m_placeholder);
    QVERIFY(QDir(pictureFolder()).isEmpty());
}

void HtmlTextBrowserTest::showsPicturesWithinLimits()
{
    const QString folder = scratchFolder() + "/large/";
    QVERIFY(QDir().mkpath(folder));
    const auto save = [&folder](const QString &name, const QSize &size, qint64 bytes = 0) {
        QImage image(size, QImage::Format_Mono);
        image.fill(0);
        QVERIFY(image.save(folder + name));
        QVERIFY(bytes == 0 || QFile::resize(folder + name, bytes));
    };
    const QSize largest(4096, HtmlTextBrowser::maxPicturePixels / 4096);
    save("beyond.png", largest + QSize(0, 1));
    save("file.png", {20, 20}, ImageDownloader::maxBytes);
    save("file-beyond.png", {20, 20}, ImageDownloader::maxBytes + 1);
    save("last.png", {20, 20});
    m_browser->setSearchPaths({folder, themeFolder() + "/images"});
    m_browser->setText("<p>");
    QCOMPARE(shownSize("processing.gif"), QImage(themeFolder() + "/images/processing.gif").size());
    QCOMPARE(shownSize("file.png"), QSize(20, 20));
    for (const char *name : {"beyond.png", "file-beyond.png"})
        QCOMPARE(shownSize(name), m_placeholder);

    // What is read again takes no more of the page's share.
    m_browser->setText("<p>");
    const int count = int(HtmlTextBrowser::maxPagePixels / HtmlTextBrowser::maxPicturePixels);
    for (int i = 0; i < 2 * count; ++i) {
        const QString name = QString("%1.png").arg(i % count);
        save(name, largest);
        QCOMPARE(shownSize(name), largest);
    }
    QCOMPARE(shownSize("last.png"), m_placeholder);
    m_browser->setText("<p>");
    QCOMPARE(shownSize("last.png"), QSize(20, 20));
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
    const QString real = isLink ? scratchFolder() + "/precious" : folder;
    QVERIFY(QDir().mkpath(real + "/image"));
    for (const char *name : {"/image/0.png", "/image/planted.png"}) {
        QFile file(real + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(pngFile({31, 32}));
    }
    if (isLink)
        QVERIFY(QFile::link(real, folder));
    else
        QVERIFY(::chown(QFile::encodeName(folder).constData(), 1, 1) == 0);

    answerPictures(1, {10, 10});
    m_browser->setText(base() + pictures(0, 1) + "<img src=\"planted.png\">");
    QTRY_COMPARE(shownSize("../image/0.png"), QSize(10, 10));
    QCOMPARE(shownSize("planted.png"), m_placeholder);
    QCOMPARE(QImage(real + "/image/0.png").size(), QSize(31, 32));

    // Neither may a host's own search path lead there.
    m_browser->setSearchPaths({folder + "/image"});
    m_browser->setText("<p><img src=\"planted.png\"></p>");
    m_browser->grab();
    QCOMPARE(shownSize("planted.png"), m_placeholder);
    QFile::remove(folder);
}

QTEST_MAIN(HtmlTextBrowserTest)
#include "html-text-browser-test.moc"
