// SPDX-License-Identifier: MIT

#include "support/http-server.h"
#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QDesktopServices>
#include <QProgressBar>
#include <QTcpSocket>
#include <QtTest>

#include <sys/stat.h>

namespace {

class CountingWindow : public BrowserWindow
{
    Q_OBJECT

public:
    CountingWindow()
        : BrowserWindow(nullptr)
    {
    }
    void fallbackOffline() override { Q_EMIT fellBack(); }
    QNetworkAccessManager *manager() const { return m_manager; }

Q_SIGNALS:
    void fellBack();
};

HtmlTextBrowser *browserOf(const QWidget &window)
{
    return window.findChild<HtmlTextBrowser *>();
}

QString shownText(const QWidget &window)
{
    return browserOf(window)->toPlainText();
}

bool isBusy(const QWidget &window)
{
    return window.findChild<QProgressBar *>()->isVisible();
}

} // namespace

class HelpWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void asksForTheArticle();
    void takesHostsOnly();
    void showsTheAnswer();
    void fallsBackOnErrors();
    void keepsWhatItShowsWithoutOfflinePage();
    void givesUpLongPagesAtOnce();
    void keepsNoCookies();
    void givesUpAfterTenSeconds();
    void laterAnswerWins();
    void canBeDeletedWhileFetching();
    void isBusyUntilTheAnswer();
    void isUsedByKeyboard();
    void openUrl(const QUrl &url) { m_opened.append(url); }

private:
    [[nodiscard]] static HelpContext context(const QString &lang = "enu",
                                             const QString &link = "page.html")
    {
        return {lang, scratchFolder() + "/help", link, "back up & restore", "2.5"};
    }
    void respond(const QByteArray &response);
    [[nodiscard]] QUrl address(const QString &path) const { return QUrl(m_server->base() + path); }

    const QString m_path = "/cgi/knowledgebase/";
    std::unique_ptr<HttpServer> m_server;
    QList<QUrl> m_opened;
};

void HelpWindowTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    setUpHost();
    for (const QString &lang : QStringList{"enu", "ger", "spn", "fre"})
        writeScratchFile("help/" + lang + "/page.html", "<p>offline " + lang.toUtf8() + " ä</p>");
    writeScratchFile("help/enu/long.html", QByteArray(BrowserWindow::maxPageBytes + 1, 'x'));
    const QString pipe = scratchFolder() + "/help/enu/pipe.html";
    QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
}

void HelpWindowTest::init()
{
    m_server = std::make_unique<HttpServer>();
    m_server->handle("/silent", [](QTcpSocket *) {});
    HelpWindow::setKnowledgeBaseHost(m_server->base());
}

void HelpWindowTest::asksForTheArticle()
{
    QMap<QString, QString> codes = {
        {"enu", "enu"}, {"deu", "ger"}, {"esn", "spn"}, {"fra", "fre"}, {"DEU", "DEU"}};
    for (const char *untranslated : {"dan", "sve", "hun", "trk", "nor", "ptg", "ptb", "tha"})
        codes.insert(untranslated, "enu");
    for (auto code = codes.begin(); code != codes.end(); ++code) {
        const HelpWindow window(context(code.key()), nullptr);
        const bool hasPage = code.key() != "DEU";
        QTRY_COMPARE(shownText(window), hasPage ? "offline " + code.value() + " ä" : "");
        QTRY_VERIFY(!m_server->requests().isEmpty());
        QCOMPARE(m_server->requests().last(),
                 "/cgi/knowledgebase/?action=findHelpFile&section=back%20up%20%26%20restore&lang="
                     + code.value() + "&link=page.html&unique=kovaline_utility_help&version=2.5");
    }
}

void HelpWindowTest::takesHostsOnly()
{
    HelpWindow::setKnowledgeBaseHost("help.example.com:8443");
    const QUrl address("https://help.example.com:8443/cgi/knowledgebase/");
    QCOMPARE(HelpWindow::knowledgeBaseAddress(), address);
    WarningCatcher warnings;
    for (const char *bad : {"", "https://", "file:///etc", "a b", "ftp://help.example.com"})
        HelpWindow::setKnowledgeBaseHost(bad);
    QCOMPARE(HelpWindow::knowledgeBaseAddress(), address);
    const QStringList texts = warnings.take();
    QCOMPARE(texts.size(), 5);
    QCOMPARE(texts.last(), "Invalid knowledge base host \"ftp://help.example.com\"");
    HelpWindow::setKnowledgeBaseHost("http://localhost:1/other/path?query#x");
    QCOMPARE(HelpWindow::knowledgeBaseAddress(), QUrl("http://localhost:1/cgi/knowledgebase/"));
}

void HelpWindowTest::respond(const QByteArray &response)
{
    m_server->handle(m_path, [response](QTcpSocket *socket) {
        socket->write(response);
        if (!response.endsWith("and waits"))
            socket->disconnectFromHost();
    });
}

void HelpWindowTest::showsTheAnswer()
{
    // Each byte is a chunk of its own; what takes the square of their number takes minutes.
    const QByteArray chunks = QByteArray("1\r\n \r\n").repeated(200000) + "4\r\nlast\r\n0\r\n\r\n";
    const QPair<QByteArray, QString> answers[] = {
        {HttpServer::response("<p>ä &amp; あ</p>"), "ä & あ"},
        {HttpServer::response(""), ""},
        {HttpServer::response(QByteArray("<p>before\0after</p>", 19)), "before"},
        {HttpServer::response(QByteArray("<p>a\xFF ") + "b</p>"), "a\uFFFD b"},
        {HttpServer::response("as it is", "200 OK\r\nContent-Encoding: Identity "), "as it is"},
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunks, "last"},
    };
    for (const auto &[response, text] : answers) {
        respond(response);
        const HelpWindow window(context(), nullptr);
        browserOf(window)->setPlainText("nothing yet");
        QTRY_COMPARE_WITH_TIMEOUT(shownText(window).trimmed(), text, 20000);
    }
}

void HelpWindowTest::fallsBackOnErrors()
{
    const QByteArray page = "<p>server's own page</p>";
    for (const QByteArray &response :
         {HttpServer::response(page, "404 Not Found"),
          HttpServer::response({}, "302 Found\r\nLocation: /elsewhere"),
          HttpServer::response(QByteArray(BrowserWindow::maxPageBytes + 1, 'x')),
          QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\nand waits"),
          QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n<p>cut short"),
          HttpServer::response(HttpServer::packed(), "200 OK\r\nContent-Encoding: gzip")}) {
        respond(response);
        const HelpWindow window(context(), nullptr);
        QTRY_VERIFY2(shownText(window) == "offline enu ä", response.left(60).constData());
    }
}

void HelpWindowTest::keepsWhatItShowsWithoutOfflinePage()
{
    m_server->answer(m_path, "<p>article</p>");
    for (const char *link : {"missing.html", "pipe.html", "long.html", "."}) {
        HelpWindow window(context("enu", link), nullptr);
        QTRY_COMPARE(shownText(window), "article");
        window.fallbackOffline();
        QCOMPARE(shownText(window), "article");
        QCOMPARE(browserOf(window)->searchPaths(), QStringList(scratchFolder() + "/help/enu"));
    }
}

void HelpWindowTest::givesUpLongPagesAtOnce()
{
    m_server->handle("/endless", [](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nfffffff\r\n"
                      + QByteArray(BrowserWindow::maxPageBytes + 1, 'x'));
    });
    CountingWindow window;
    QSignalSpy fellBack(&window, &CountingWindow::fellBack);
    window.reload(address("endless"));
    QVERIFY2(fellBack.wait(5000), "it goes on until its time is over");

    m_server->answer("/short", "four");
    QNetworkReply *reply = window.manager()->get(QNetworkRequest(address("short")));
    QSignalSpy finished(reply, &QNetworkReply::finished);
    connect(reply, &QNetworkReply::finished, this, [reply] {
        QCOMPARE(reply->bytesAvailable(), 4);
        QCOMPARE(reply->read(3), "fou");
        QCOMPARE(reply->bytesAvailable(), 1);
    });
    QVERIFY(finished.wait());
}

void HelpWindowTest::keepsNoCookies()
{
    QByteArrayList heads;
    m_server->handle(m_path, [&heads](QTcpSocket *socket) {
        heads += socket->property("head").toByteArray().toLower();
        socket->write(HttpServer::response("x", "200 OK\r\nSet-Cookie: who=me; path=/"));
        socket->disconnectFromHost();
    });
    HelpWindow window(context(), nullptr);
    QTRY_COMPARE(shownText(window), "x");
    window.retrieveHelpContent();
    QTRY_COMPARE(heads.size(), 2);
    QVERIFY2(!heads.last().contains("\ncookie:"), heads.last().constData());
    // Nor does what a host sends by the same manager.
    CountingWindow host;
    for (int count = 3; count < 5; ++count) {
        host.manager()->post(QNetworkRequest(address(m_path.mid(1))), "text");
        QTRY_COMPARE(heads.size(), count);
        QVERIFY2(!heads.last().contains("\ncookie:"), heads.last().constData());
        QCoreApplication::processEvents();
    }
}

void HelpWindowTest::givesUpAfterTenSeconds()
{
    CountingWindow window;
    QSignalSpy aborts(&window, &BrowserWindow::sigAbortRequest);
    QSignalSpy fellBack(&window, &CountingWindow::fellBack);
    QElapsedTimer timer;
    timer.start();
    window.reload(address("silent"));
    QVERIFY(fellBack.wait(15000));
    QVERIFY(timer.elapsed() >= 9400 && timer.elapsed() < 13000);
    QCOMPARE(aborts.count(), 1);
    QCOMPARE(fellBack.count(), 1);
}

void HelpWindowTest::laterAnswerWins()
{
    m_server->hold();
    CountingWindow window;
    QSignalSpy fellBack(&window, &CountingWindow::fellBack);
    window.show();
    for (const QString &page : QStringList{"one", "two"}) {
        const int open = m_server->openRequests();
        m_server->answer('/' + page, page.toUtf8());
        window.reload(address(page));
        QTRY_COMPARE(m_server->openRequests(), open + 1);
    }
    m_server->release();
    QTRY_COMPARE(shownText(window), "one");
    QVERIFY(isBusy(window));
    m_server->release();
    QTRY_COMPARE(shownText(window), "two");
    QVERIFY(!isBusy(window));

    window.reload(address("silent"));
    window.reload(address("silent"));
    window.slotQueryTimeout();
    QCOMPARE(fellBack.count(), 2);
    QVERIFY(!isBusy(window));
    QCOMPARE(shownText(window), "two");
}

void HelpWindowTest::canBeDeletedWhileFetching()
{
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    auto window = std::make_unique<CountingWindow>();
    window->reload(address("silent"));
    QTRY_COMPARE(m_server->openRequests(), 1);
    window.reset();
    QTRY_COMPARE(abandoned.count(), 1);

    // The fall-back itself may close the window for good.
    const QPointer<CountingWindow> closing = new CountingWindow;
    connect(closing, &CountingWindow::fellBack, closing, &QObject::deleteLater);
    closing->reload(address("missing"));
    QTRY_VERIFY(!closing);
}

void HelpWindowTest::isBusyUntilTheAnswer()
{
    m_server->hold();
    m_server->answer(m_path, "<title>Title</title><p>text</p>");
    HelpWindow window(context(), nullptr);
    window.resize(400, 300);
    window.show();
    HtmlTextBrowser *browser = browserOf(window);
    const auto *bar = window.findChild<QProgressBar *>();
    QVERIFY(isBusy(window));
    QVERIFY2(bar->minimum() == 0 && bar->maximum() == 0, "shows a progress that nobody knows");
    QCOMPARE(bar->parentWidget(), browser);
    QCOMPARE(bar->pos(), QPoint(0, 0));
    window.resize(500, 300);
    QTRY_COMPARE(bar->width(), browser->width());
    QTRY_COMPARE(m_server->openRequests(), 1);
    m_server->release();
    QTRY_VERIFY(!isBusy(window));
    QCOMPARE(spoken(browser), "Title");
}

void HelpWindowTest::isUsedByKeyboard()
{
    writeScratchFile("help/enu/first.html", "<title>First</title><a href=\"more/next.html\">n</a>");
    writeScratchFile("help/enu/more/next.html",
                     "<title>Next</title><a href=\"http://outside.example.com/\">out</a>");
    // Nobody is asked, so there is nothing to wait for.
    HelpWindow::setKnowledgeBaseHost("help.invalid");
    HelpWindow window(context("enu", "first.html"), nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(spoken(browserOf(window)), QString("First"), 1000);
    showActive(&window);
    QCOMPARE(window.windowModality(), Qt::ApplicationModal);

    press(&window, Qt::Key_Tab);
    press(&window, Qt::Key_Return);
    QTRY_COMPARE(spoken(browserOf(window)), QString("Next"));
    QCOMPARE(shownText(window), QString("out"));
    QDesktopServices::setUrlHandler("http", this, "openUrl");
    press(&window, Qt::Key_Tab);
    press(&window, Qt::Key_Return);
    QTRY_COMPARE(m_opened, QList<QUrl>{QUrl("http://outside.example.com/")});
    QDesktopServices::unsetUrlHandler("http");
    QVERIFY(window.isVisible());
    press(&window, Qt::Key_Escape);
    QTRY_VERIFY(!window.isVisible());
}

QTEST_MAIN(HelpWindowTest)
#include "help-window-test.moc"
