#include "support/http-server.h"
#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QAccessible>
#include <QDesktopServices>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QProgressBar>
#include <QScrollBar>
#include <QTcpSocket>
#include <QtTest>

#include <sys/stat.h>

namespace {

// Notes what is called when, and shows a text of its own in place of an offline page.
class CountingWindow : public BrowserWindow
{
    Q_OBJECT

public:
    explicit CountingWindow(QWidget *parent = nullptr)
        : BrowserWindow(parent)
    {
    }
    void fallbackOffline() override
    {
        ++fallbacks;
        Q_EMIT fellBack();
    }
    QNetworkAccessManager *manager() const { return m_manager; }

    int fallbacks = 0;

Q_SIGNALS:
    void fellBack();
};

QString shownText(const QWidget &window)
{
    return window.findChild<HtmlTextBrowser *>()->toPlainText();
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
    void asksForTheArticle_data();
    void asksForTheArticle();
    void takesHostsOnly();
    void needsNoServer();
    void showsTheAnswer_data();
    void showsTheAnswer();
    void fallsBackOnErrors_data();
    void fallsBackOnErrors();
    void keepsWhatItShowsWithoutOfflinePage();
    void givesUpAfterTenSeconds();
    void laterAnswerWins();
    void canBeDeletedWhileFetching();
    void usesTheProxyOfTheApplication();
    void isBusyUntilTheAnswer();
    void isUsedByKeyboard();
    void openUrl(const QUrl &url) { m_opened.append(url); }

private:
    HelpContext context(const QString &lang = "enu") const
    {
        return {lang, scratchFolder() + "/help", "page.html", "back up & restore", "2.5"};
    }
    QUrl address(const QString &path) const { return QUrl(m_server->base() + path); }

    const QString m_path = "/cgi/knowledgebase/";
    std::unique_ptr<HttpServer> m_server;
    QList<QUrl> m_opened;
};

void HelpWindowTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    setUpHost();
    for (const char *lang : {"enu", "ger", "spn", "fre", "jpn"})
        writeScratchFile(QString("help/%1/page.html").arg(QLatin1String(lang)),
                         QByteArray("<p>offline ") + lang + " \xC3\xA4</p>");
    writeScratchFile("help/enu/long.html", QByteArray(5000000, 'x'));
    ::mkfifo(QFile::encodeName(scratchFolder() + "/help/enu/pipe.html").constData(), 0600);
}

void HelpWindowTest::init()
{
    m_server = std::make_unique<HttpServer>();
    m_server->handle("/silent", [](QTcpSocket *) {});
    HelpWindow::setKnowledgeBaseHost(m_server->base());
    m_opened.clear();
}

void HelpWindowTest::asksForTheArticle_data()
{
    QTest::addColumn<QString>("lang");
    QTest::addColumn<QString>("sent");
    const QMap<QString, QString> codes = {{"enu", "enu"}, {"deu", "ger"}, {"esn", "spn"},
                                          {"fra", "fre"}, {"jpn", "jpn"}, {"DEU", "DEU"}};
    for (auto it = codes.begin(); it != codes.end(); ++it)
        QTest::newRow(qPrintable(QLatin1Char('-') + it.key())) << it.key() << it.value();
    for (const char *code : {"dan", "sve", "hun", "trk", "nor", "ptg", "ptb", "tha"})
        QTest::newRow(code) << QString::fromLatin1(code) << "enu";
}

void HelpWindowTest::asksForTheArticle()
{
    QFETCH(QString, lang);
    QFETCH(QString, sent);
    QSignalSpy requested(m_server.get(), &HttpServer::requested);
    HelpWindow window(context(lang), nullptr);
    QVERIFY(requested.wait());
    QCOMPARE(m_server->requests(),
             QStringList("/cgi/knowledgebase/?action=findHelpFile"
                         "&section=back%20up%20%26%20restore&lang=%1&link=page.html"
                         "&unique=kovaline_utility_help&version=2.5".arg(sent)));
    const bool hasPage = QFile::exists(scratchFolder() + QString("/help/%1/page.html").arg(sent));
    QTRY_COMPARE(shownText(window), hasPage ? QString("offline %1 ä").arg(sent) : QString());
}

void HelpWindowTest::takesHostsOnly()
{
    HelpWindow::setKnowledgeBaseHost("help.example.com:8443");
    const QUrl address("https://help.example.com:8443/cgi/knowledgebase/");
    QCOMPARE(HelpWindow::knowledgeBaseAddress(), address);
    WarningCatcher warnings;
    for (const char *bad : {"", "https://", "file:///etc", "ftp://help.example.com", "a b"})
        HelpWindow::setKnowledgeBaseHost(QString::fromLatin1(bad));
    QCOMPARE(HelpWindow::knowledgeBaseAddress(), address);
    const QStringList texts = warnings.take();
    QCOMPARE(texts.size(), 5);
    QCOMPARE(texts.at(3), "Invalid knowledge base host \"ftp://help.example.com\"");
    HelpWindow::setKnowledgeBaseHost("http://localhost:1/other/path?query#x");
    QCOMPARE(HelpWindow::knowledgeBaseAddress(), QUrl("http://localhost:1/cgi/knowledgebase/"));
}

void HelpWindowTest::needsNoServer()
{
    HelpWindow::setKnowledgeBaseHost("help.invalid");
    QElapsedTimer timer;
    timer.start();
    HelpWindow window(context("deu"), nullptr);
    QTRY_COMPARE(shownText(window), "offline ger ä");
    QVERIFY(timer.elapsed() < 1000);
}

void HelpWindowTest::showsTheAnswer_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text");
    QTest::newRow("page") << QByteArray("<p>\xC3\xA4 &amp; \xE3\x81\x82</p>") << "ä & あ";
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("NUL") << QByteArray("<p>before\0after</p>", 19) << "before";
    QTest::newRow("not UTF-8") << QByteArray("<p>a\xFF"
                                             "b</p>")
                               << "a\uFFFDb";
    QTest::newRow("plain") << QByteArray("just text") << "just text";
}

void HelpWindowTest::showsTheAnswer()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, text);
    m_server->answer(m_path, body);
    HelpWindow window(context(), nullptr);
    window.findChild<HtmlTextBrowser *>()->setPlainText("before");
    window.show();
    QTRY_VERIFY(!isBusy(window));
    QCOMPARE(shownText(window), text);
}

void HelpWindowTest::fallsBackOnErrors_data()
{
    QTest::addColumn<QByteArray>("response");
    QTest::newRow("404") << HttpServer::response("<p>server's own page</p>", "404 Not Found");
    QTest::newRow("500") << HttpServer::response("<p>server's own page</p>", "500 Broken");
    QTest::newRow("cut short") << QByteArray(
        "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n<p>half");
    QTest::newRow("no HTTP") << QByteArray("hello\r\n");
    QTest::newRow("closed") << QByteArray();
    QTest::newRow("too long") << HttpServer::response(QByteArray(5000000, 'x'));
    QTest::newRow("announced too long")
        << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n");
}

void HelpWindowTest::fallsBackOnErrors()
{
    QFETCH(QByteArray, response);
    m_server->handle(m_path, [response](QTcpSocket *socket) {
        socket->write(response);
        socket->disconnectFromHost();
    });
    HelpWindow window(context(), nullptr);
    QTRY_COMPARE(shownText(window), "offline enu ä");
}

void HelpWindowTest::keepsWhatItShowsWithoutOfflinePage()
{
    m_server->answer(m_path, "<p>article</p>");
    for (const char *link : {"missing.html", "pipe.html", "long.html", ".", ""}) {
        HelpContext asked = context();
        asked.link = QString::fromLatin1(link);
        HelpWindow window(asked, nullptr);
        QTRY_COMPARE(shownText(window), "article");
        window.fallbackOffline();
        QCOMPARE(shownText(window), "article");
        QCOMPARE(window.findChild<HtmlTextBrowser *>()->searchPaths(),
                 QStringList(scratchFolder() + "/help/enu"));
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
    QCOMPARE(window.fallbacks, 1);
}

void HelpWindowTest::laterAnswerWins()
{
    m_server->hold();
    m_server->answer("/one", "<p>one</p>");
    m_server->answer("/two", "<p>two</p>");
    CountingWindow window;
    window.show();
    window.reload(address("one"));
    QTRY_COMPARE(m_server->openRequests(), 1);
    window.reload(address("two"));
    QTRY_COMPARE(m_server->openRequests(), 2);
    m_server->release();
    QTRY_COMPARE(shownText(window), "one");
    QVERIFY(isBusy(window));
    m_server->release();
    QTRY_COMPARE(shownText(window), "two");
    QVERIFY(!isBusy(window));

    window.reload(address("silent"));
    window.reload(address("silent"));
    window.slotQueryTimeout();
    QCOMPARE(window.fallbacks, 2);
    QVERIFY(!isBusy(window));
    QCOMPARE(shownText(window), "two");
}

void HelpWindowTest::canBeDeletedWhileFetching()
{
    QSignalSpy abandoned(m_server.get(), &HttpServer::abandoned);
    QSignalSpy requested(m_server.get(), &HttpServer::requested);
    auto *window = new CountingWindow;
    window->reload(address("silent"));
    QVERIFY(requested.wait());
    delete window;
    QTRY_COMPARE(abandoned.count(), 1);

    // The fall-back itself may close the window for good.
    auto *closing = new CountingWindow;
    connect(closing, &CountingWindow::fellBack, closing, &QObject::deleteLater);
    QSignalSpy destroyed(closing, &QObject::destroyed);
    closing->reload(address("missing"));
    QVERIFY(destroyed.wait());
}

void HelpWindowTest::usesTheProxyOfTheApplication()
{
    HttpServer proxy;
    proxy.answer("http://help.example.com/cgi/knowledgebase/", "<p>by proxy</p>");
    QNetworkProxy::setApplicationProxy(
        QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", proxy.serverPort()));
    HelpWindow::setKnowledgeBaseHost("http://help.example.com");
    HelpWindow window(context(), nullptr);
    QTRY_COMPARE(shownText(window), "by proxy");
    QNetworkProxy::setApplicationProxy(QNetworkProxy());
}

void HelpWindowTest::isBusyUntilTheAnswer()
{
    m_server->hold();
    m_server->answer(m_path, "<title>Title</title><p>text</p>");
    HelpWindow window(context(), nullptr);
    window.resize(400, 300);
    window.show();
    const auto *browser = window.findChild<HtmlTextBrowser *>();
    const auto *bar = window.findChild<QProgressBar *>();
    QVERIFY(isBusy(window));
    QCOMPARE(bar->parentWidget(), browser);
    QCOMPARE(bar->pos(), QPoint(0, 0));
    QCOMPARE(bar->width(), browser->width());
    window.resize(500, 300);
    QTRY_COMPARE(bar->width(), browser->width());
    QTRY_COMPARE(m_server->openRequests(), 1);
    m_server->release();
    QTRY_VERIFY(!isBusy(window));
    QCOMPARE(browser->accessibleName(), "Title");
    QAccessibleInterface *page =
        QAccessible::queryAccessibleInterface(const_cast<HtmlTextBrowser *>(browser));
    QVERIFY(page && page->textInterface());
    QCOMPARE(page->textInterface()->text(0, page->textInterface()->characterCount()), "text");
}

void HelpWindowTest::isUsedByKeyboard()
{
    const QByteArray lines = QByteArray("<p>line</p>").repeated(100);
    m_server->answer(m_path, "<p><a href=\"http://outside.example.com/\">out</a></p>" + lines);
    HelpWindow window(context(), nullptr);
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCOMPARE(window.windowModality(), Qt::ApplicationModal);
    auto *browser = window.findChild<HtmlTextBrowser *>();
    QTRY_VERIFY(!isBusy(window));
    QVERIFY(browser->hasFocus());

    QDesktopServices::setUrlHandler("http", this, "openUrl");
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    QTest::keyClick(window.windowHandle(), Qt::Key_Return);
    QTRY_COMPARE(m_opened, QList<QUrl>{QUrl("http://outside.example.com/")});
    QDesktopServices::unsetUrlHandler("http");
    QVERIFY(window.isVisible());

    QTest::keyClick(window.windowHandle(), Qt::Key_PageDown);
    QTRY_VERIFY(browser->verticalScrollBar()->value() > 0);
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    QTRY_VERIFY(!window.isVisible());
}

QTEST_MAIN(HelpWindowTest)
#include "help-window-test.moc"
