#include "support/http-server.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/html-text-browser.h>

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QScrollBar>
#include <QTcpSocket>
#include <QtTest>

#include <sys/stat.h>

namespace {

QByteArray png(int width, int height, const QColor &color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// A picture of a few bytes that claims to have 30,000 by 30,000 pixels.
QByteArray bomb()
{
    QByteArray bytes = png(1, 1, Qt::red);
    const QByteArray size("\x00\x00\x75\x30\x00\x00\x75\x30", 8);
    bytes.replace(16, 8, size);
    const auto crc = [](const QByteArray &data) {
        quint32 sum = 0xFFFFFFFF;
        for (const char c : data) {
            sum ^= uchar(c);
            for (int bit = 0; bit < 8; ++bit)
                sum = (sum >> 1) ^ (sum & 1 ? 0xEDB88320 : 0);
        }
        return ~sum;
    };
    const quint32 sum = qToBigEndian(crc(bytes.mid(12, 17)));
    return bytes.replace(29, 4, reinterpret_cast<const char *>(&sum), 4);
}

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

QSize shownSize(const HtmlTextBrowser &browser, const QString &name)
{
    return browser.document()
        ->resource(QTextDocument::ImageResource, QUrl(name))
        .value<QPixmap>()
        .size();
}

int countColor(HtmlTextBrowser &browser, const QColor &color)
{
    const QImage image = browser.viewport()->grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color;
    }
    return count;
}

} // namespace

class HtmlTextBrowserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void showsTextWithoutBaseAsItIs_data();
    void showsTextWithoutBaseAsItIs();
    void downloadsEachSourceOnce();
    void findsWhatIsSpelledOtherwise();
    void showsWhatArrives();
    void keepsThePlace();
    void gathersArrivals();
    void limitsDownloadsAndKeepsTheirOrder();
    void showsTheNewTextFirst();
    void beginsRepeatedDownloadsAnew();
    void stopsWithTheBrowser();
    void downloadsFromWebServersOnly();
    void showsFilesOfSearchPathsOnly_data();
    void showsFilesOfSearchPathsOnly();
    void followsLinksInsideSearchPaths();
    void ignoresForeignPictureFolder();

private:
    QString base() const { return QString("<html><base href=\"%1x/\">").arg(m_server->base()); }

    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<HtmlTextBrowser> m_browser;
    const QSize m_placeholder{16, 16};
};

void HtmlTextBrowserTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
}

void HtmlTextBrowserTest::init()
{
    QDir(QDir::tempPath() + "/kovaline_help").removeRecursively();
    m_server = std::make_unique<HttpServer>();
    m_browser = std::make_unique<HtmlTextBrowser>(nullptr);
    m_browser->resize(400, 300);
    m_browser->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_browser.get()));
}

void HtmlTextBrowserTest::showsTextWithoutBaseAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << "base href, no tags: src=\"x\"";
    QTest::newRow("no base") << "<p>a <img src=\"../image/1.png\"></p>";
    QTest::newRow("capitals") << "<BASE HREF=\"http://127.0.0.1/\"><img src=\"1.png\">";
    QTest::newRow("open base") << "<p>a <base href=\"http://127.0.0.1/";
}

void HtmlTextBrowserTest::showsTextWithoutBaseAsItIs()
{
    QFETCH(QString, text);
    m_browser->setText(text);
    QTextDocument plain;
    if (Qt::mightBeRichText(text))
        plain.setHtml(text);
    else
        plain.setPlainText(text);
    QCOMPARE(m_browser->toPlainText(), plain.toPlainText());
    QCOMPARE(m_browser->searchPaths(), QStringList());
    QVERIFY(!QFile::exists(pictureFolder()));
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
    const QStringList sources = {"../image/a%20b.png", "c d.png", "e.png?x=1&amp;y=2", "ä.png",
                                 "100%.png"};
    QString text = base();
    for (const QString &source : sources)
        text += QString("<img src=\"%1\">").arg(source);
    for (const char *path :
         {"/image/a%20b.png", "/x/c%20d.png", "/x/e.png", "/x/%C3%A4.png", "/x/100%25.png"})
        m_server->answer(QString::fromLatin1(path), png(30, 7, Qt::red));
    m_browser->setText(text);
    QTRY_COMPARE(countColor(*m_browser, Qt::red), sources.size() * 30 * 7);
}

void HtmlTextBrowserTest::showsWhatArrives()
{
    const QString name = "../image/1.png";
    m_server->answer("/image/1.png", png(50, 20, Qt::red));
    m_browser->setText(base() + pictures(1, 1));
    QCOMPARE(shownSize(*m_browser, name), m_placeholder);
    m_browser->grab();
    QTRY_COMPARE(countColor(*m_browser, Qt::red), 50 * 20);

    m_server->answer("/image/1.png", png(120, 90, Qt::blue));
    m_browser->setText(base() + pictures(1, 1));
    QCOMPARE(countColor(*m_browser, Qt::red), 50 * 20);
    QTRY_COMPARE(countColor(*m_browser, Qt::blue), 120 * 90);
    QCOMPARE(countColor(*m_browser, Qt::red), 0);

    m_server->answer("/image/1.png", "this is no picture");
    m_browser->setText(base() + pictures(1, 1));
    QTRY_COMPARE(shownSize(*m_browser, name), m_placeholder);
}

void HtmlTextBrowserTest::keepsThePlace()
{
    m_server->hold();
    for (int i = 0; i < 4; ++i)
        m_server->answer(QString("/image/%1.png").arg(i), png(300, 500, Qt::red));
    const QString lines = QString("<p>word and word</p>").repeated(100);
    m_browser->setText(base() + lines + pictures(0, 2) + lines + pictures(2, 2));
    m_browser->grab();
    QCoreApplication::processEvents();
    QTextCursor cursor = m_browser->textCursor();
    cursor.setPosition(30);
    cursor.setPosition(90, QTextCursor::KeepAnchor);
    m_browser->setTextCursor(cursor);
    QScrollBar *bar = m_browser->verticalScrollBar();
    const int before = bar->maximum();
    bar->setValue(before - 300);
    const QStringList paths = m_browser->searchPaths();

    QTRY_COMPARE(m_server->openRequests(), 4);
    m_server->release(4);
    QTRY_VERIFY(bar->maximum() >= before + 4 * 450);
    QCOMPARE(bar->value(), before - 300);
    QCOMPARE(m_browser->textCursor().selectionStart(), 30);
    QCOMPARE(m_browser->textCursor().selectionEnd(), 90);
    QCOMPARE(m_browser->searchPaths(), paths);
}

void HtmlTextBrowserTest::gathersArrivals()
{
    constexpr int count = 400;
    for (int i = 0; i < count; ++i)
        m_server->answer(QString("/image/%1.png").arg(i), png(40, 40, Qt::red));
    m_browser->setText(base() + pictures(0, count));
    const auto *layout = m_browser->document()->documentLayout();
    layout->documentSize();
    QSignalSpy layouts(layout, &QAbstractTextDocumentLayout::documentSizeChanged);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE_WITH_TIMEOUT(shownSize(*m_browser, "../image/399.png"), QSize(40, 40), 60000);
    QTRY_COMPARE(shownSize(*m_browser, "../image/398.png"), QSize(40, 40));
    // One for each 40 milliseconds, and each may report its size twice.
    QVERIFY2(layouts.count() <= 2 * (timer.elapsed() / 40 + 2),
             qPrintable(QString::number(layouts.count())));
    QVERIFY(layouts.count() < count / 2);
}

void HtmlTextBrowserTest::limitsDownloadsAndKeepsTheirOrder()
{
#ifdef __SANITIZE_ADDRESS__
    constexpr int count = 200;
#else
    constexpr int count = 1000;
#endif
    m_server->hold();
    connect(m_server.get(), &HttpServer::requested, this,
            [this] { QTimer::singleShot(1, m_server.get(), [this] { m_server->release(); }); });
    m_browser->setText(base() + pictures(0, count));
    QTRY_VERIFY(m_server->requests().size() > 20);
    const QDir threads("/proc/self/task");
    QVERIFY(threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() < 40);
    QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), count, 60000);
    QCOMPARE(m_server->mostOpenRequests(), HtmlTextBrowser::maxDownloads);
    const QStringList requests = m_server->requests();
    for (int i = 0; i < count; ++i) {
        const int at = requests.indexOf(QString("/image/%1.png").arg(i));
        QVERIFY2(qAbs(at - i) < 100, qPrintable(QString("%1 was number %2").arg(i).arg(at)));
    }
}

void HtmlTextBrowserTest::showsTheNewTextFirst()
{
    m_server->hold();
    m_browser->setText(base() + pictures(0, 20));
    QTRY_COMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
    m_browser->setText(base() + pictures(100, 1));
    m_server->release();
    QTRY_COMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads + 1);
    QCOMPARE(m_server->requests().last(), "/image/100.png");
    connect(m_server.get(), &HttpServer::requested, this, [this] { m_server->release(); });
    m_server->release(HtmlTextBrowser::maxDownloads);
    QTRY_COMPARE(m_server->requests().size(), 21);
}

void HtmlTextBrowserTest::beginsRepeatedDownloadsAnew()
{
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    m_server->answer("/image/0.png", png(10, 10, Qt::red));
    m_browser->setText(base() + pictures(0, 1));
    QTRY_COMPARE(m_server->requests().size(), 1);
    m_browser->setText(base() + pictures(0, 1));
    QTRY_COMPARE(m_server->requests().size(), 2);
    QTRY_COMPARE(abandoned.count(), 1);
    m_server->release(2);
    QTRY_COMPARE(shownSize(*m_browser, "../image/0.png"), QSize(10, 10));

    m_browser->slotDownloadFinished("never begun", -1);
    QTest::qWait(60);
    QCOMPARE(shownSize(*m_browser, "../image/0.png"), QSize(10, 10));
}

void HtmlTextBrowserTest::stopsWithTheBrowser()
{
    m_server->hold();
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    for (int i = 0; i < 10; ++i)
        m_server->answer(QString("/image/%1.png").arg(i), png(10, 10, Qt::red));
    m_browser->setText(base() + pictures(0, 10));
    QTRY_COMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
    m_browser.reset();
    QTRY_COMPARE(abandoned.count(), HtmlTextBrowser::maxDownloads);
    m_server->release(10);
    QTest::qWait(50);
    QCOMPARE(m_server->requests().size(), HtmlTextBrowser::maxDownloads);
    QVERIFY(QDir(pictureFolder()).isEmpty());
}

void HtmlTextBrowserTest::downloadsFromWebServersOnly()
{
    const QString file = writeScratchFile("elsewhere/1.png", png(9, 9, Qt::red));
    const QString pipe = QFileInfo(file).path() + "/2.png";
    QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0 || errno == EEXIST);
    m_browser->setText(QString("<html><base href=\"file://%1/\">").arg(QFileInfo(file).path())
                       + "<img src=\"1.png\"><img src=\"2.png\">");
    QTest::qWait(60);
    QCOMPARE(shownSize(*m_browser, "1.png"), m_placeholder);
    QVERIFY(QDir(pictureFolder()).isEmpty());
}

void HtmlTextBrowserTest::showsFilesOfSearchPathsOnly_data()
{
    const QByteArray picture = png(11, 13, Qt::red);
    const QString inside = QFileInfo(writeScratchFile("pages/in.png", picture)).path();
    const QString outside = writeScratchFile("outside.png", picture);
    writeScratchFile("pages/sub/in.png", picture);
    writeScratchFile("pages/bomb.png", bomb());
    writeScratchFile("pages/drawing.png",
                     "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"11\" height=\"13\"><rect "
                     "width=\"11\" height=\"13\"/></svg>");
    writeScratchFile("pages/empty.png", "");
    writeScratchFile("pages/half.png", picture.left(40));
    QFile::link(outside, inside + "/link.png");
    QFile::link(inside + "/in.png", inside + "/good-link.png");
    QFile::link(scratchFolder(), inside + "/folder-link");
    QFile::link("/dev/zero", inside + "/device.png");
    ::mkfifo(QFile::encodeName(inside + "/pipe.png").constData(), 0600);
    const QString pipe = scratchFolder() + "/pipe";
    ::mkfifo(QFile::encodeName(pipe).constData(), 0600);

    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("shows");
    QTest::newRow("inside") << "in.png" << true;
    QTest::newRow("below") << "sub/../sub/in.png" << true;
    QTest::newRow("link to inside") << "good-link.png" << true;
    QTest::newRow("whole path inside") << inside + "/in.png" << true;
    QTest::newRow("address inside") << "file://" + inside + "/in.png" << true;
    QTest::newRow("data") << "data:image/png;base64," + QString::fromLatin1(picture.toBase64())
                          << true;
    QTest::newRow("above") << "../outside.png" << false;
    QTest::newRow("whole path") << outside << false;
    QTest::newRow("address") << "file://" + outside << false;
    QTest::newRow("link out") << "link.png" << false;
    QTest::newRow("folder link out") << "folder-link/outside.png" << false;
    QTest::newRow("device") << "device.png" << false;
    QTest::newRow("pipe") << "pipe.png" << false;
    QTest::newRow("pipe elsewhere") << pipe << false;
    QTest::newRow("pipe as data") << "data:" + pipe << false;
    QTest::newRow("proc") << "/proc/kmsg" << false;
    QTest::newRow("folder") << "sub" << false;
    QTest::newRow("bomb") << "bomb.png" << false;
    QTest::newRow("drawing") << "drawing.png" << false;
    QTest::newRow("empty") << "empty.png" << false;
    QTest::newRow("no name") << QString() << false;
}

void HtmlTextBrowserTest::showsFilesOfSearchPathsOnly()
{
    QFETCH(QString, source);
    QFETCH(bool, shows);
    m_browser->setSearchPaths({scratchFolder() + "/pages"});
    m_browser->setText("<html><head><link rel=\"stylesheet\" type=\"text/css\" href=\"%1\"></head>"
                       "<p><img src=\"%1\"><img src=\"half.png\"></p>".arg(source));
    m_browser->grab();
    QCOMPARE(shownSize(*m_browser, source), shows ? QSize(11, 13) : m_placeholder);
}

void HtmlTextBrowserTest::followsLinksInsideSearchPaths()
{
    writeScratchFile("site/style.css", "p { color: #ff0000 }");
    writeScratchFile("site/sub/next.html", "<p>n\xC3\xA4"
                                           "chste Seite <img src=\"p.png\"></p>");
    writeScratchFile("site/sub/p.png", png(21, 22, Qt::blue));
    writeScratchFile("site/bad.html", QByteArray("<table><tr><td>").repeated(1000));
    writeScratchFile("secret.html", "<p>secret</p>");
    m_browser->setSearchPaths({scratchFolder() + "/site"});
    m_browser->setText("<html><head><link rel=\"stylesheet\" type=\"text/css\" "
                       "href=\"style.css\"></head><body><p>first</p></body></html>");
    QCOMPARE(m_browser->document()->begin().begin().fragment().charFormat().foreground().color(),
             QColor(Qt::red));

    m_browser->setSource(QUrl("sub/next.html"));
    QVERIFY(m_browser->toPlainText().startsWith("nächste Seite"));
    QCOMPARE(countColor(*m_browser, Qt::blue), 21 * 22);
    m_browser->reload();
    QCOMPARE(countColor(*m_browser, Qt::blue), 21 * 22);

    m_browser->setSource(QUrl("../bad.html"));
    m_browser->setSource(QUrl("bad.html"));
    QVERIFY(m_browser->toPlainText().contains("<table>"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No document for"));
    m_browser->setSource(QUrl::fromLocalFile(scratchFolder() + "/secret.html"));
    QVERIFY(!m_browser->toPlainText().contains("secret"));
}

void HtmlTextBrowserTest::ignoresForeignPictureFolder()
{
    const QString precious = QFileInfo(writeScratchFile("precious/image/keep", "x")).path();
    QVERIFY(QFile::link(QFileInfo(precious).path(), QDir::tempPath() + "/kovaline_help"));
    m_server->answer("/image/0.png", png(10, 10, Qt::red));
    m_browser->setText(base() + pictures(0, 1));
    QTRY_COMPARE(m_server->requests().size(), 1);
    QTest::qWait(60);
    QCOMPARE(QDir(precious).entryList(QDir::Files), QStringList("keep"));
    QFile::remove(QDir::tempPath() + "/kovaline_help");
}

QTEST_MAIN(HtmlTextBrowserTest)
#include "html-text-browser-test.moc"
