// SPDX-License-Identifier: MIT

#include "support/http-server.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QDesktopServices>
#include <QToolTip>
#include <QtTest>
#include <QtWidgets>

namespace {

HtmlTextBrowser *browserOf(const QWidget &window)
{
    return window.findChild<HtmlTextBrowser *>();
}

// The button or field that a screen reader calls @p name.
QWidget *named(const QWidget &window, const QString &name)
{
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (spoken(widget) == name)
            return widget;
    }
    return nullptr;
}

bool shows(const QWidget &window, const QString &name)
{
    const QWidget *widget = named(window, name);
    return widget && widget->isVisible();
}

void clickLink(HtmlTextBrowser *browser, Qt::MouseButton button = Qt::LeftButton)
{
    browser->moveCursor(QTextCursor::Start);
    const QPoint place = browser->cursorRect().center() + QPoint(5, 0);
    const QPoint inWindow = browser->viewport()->mapTo(browser->window(), place);
    QTest::mouseClick(browser->window()->windowHandle(), button, {}, inWindow);
}

void type(const QWidget &window, const QString &letters)
{
    for (const QChar letter : letters)
        press(&window, letter.toUpper().unicode());
}

// The words that are highlighted in the page, and where they begin.
QPair<QString, int> highlighted(const QWidget &window)
{
    const QList<QTextEdit::ExtraSelection> selections = browserOf(window)->extraSelections();
    if (selections.isEmpty())
        return {};
    const QTextCursor cursor = selections.first().cursor;
    return {cursor.selectedText(), cursor.selectionStart()};
}

} // namespace

class HelpPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void opensTheWebAndMail();
    void startsNoOtherProgram();
    void leavesLinksToTheirHost();
    void goesBackAndForth();
    void beginsAnewWithANewText();
    void mirrorsItsHistory();
    void saysThatItLoadsOrCannot();
    void saysThatALinkLeadsNowhere();
    void findsWords();
    void wearsTheTheme();
    void openUrl(const QUrl &url) { m_opened.append(url); }

private:
    [[nodiscard]] static HelpContext context(const QString &link)
    {
        return {"enu", scratchFolder() + "/help", link, "section", "1.0"};
    }
    const QString m_path = "/cgi/knowledgebase/";
    QList<QUrl> m_opened;
};

void HelpPageTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    setUpHost();
    const QByteArray lines = QByteArray("<p>line</p>").repeated(100);
    writeScratchFile("help/enu/first.html", "<title>First</title><a href=\"next.html\">to next</a>"
                                                + lines + "<a href=\"#end\">end</a>" + lines
                                                + "<a name=\"end\">The end</a>");
    writeScratchFile("help/enu/next.html", "<title>Next</title><a href=\"gone.html\">to none</a>");
    for (const char *scheme : {"http", "https", "mailto", "ssh", "smb", "vscode", "javascript",
                               "data", "tel", "ftp", "x-program"})
        QDesktopServices::setUrlHandler(scheme, this, "openUrl");
}

void HelpPageTest::init()
{
    HelpWindow::setKnowledgeBaseHost("help.invalid");
    m_opened.clear();
}

void HelpPageTest::opensTheWebAndMail()
{
    BrowserWindow window(nullptr);
    window.resize(400, 300);
    showActive(&window);
    HtmlTextBrowser *browser = browserOf(window);
    for (const QString &link :
         QStringList{"http://a.example/", "HTTPS://b.example/x?y=z", "mailto:me@c.example"}) {
        m_opened.clear();
        browser->setText("<a href=\"" + link + "\">a link</a>");
        clickLink(browser);
        QCOMPARE(m_opened, QList<QUrl>{QUrl(link)});
        browser->moveCursor(QTextCursor::Start);
        press(&window, Qt::Key_Tab);
        QCOMPARE(spoken(browser, QAccessible::Description), QString());
        press(&window, Qt::Key_Return);
        QCOMPARE(m_opened.size(), 2);
    }
}

void HelpPageTest::startsNoOtherProgram()
{
    const QString words = "This link is not opened.";
    BrowserWindow window(nullptr);
    window.resize(400, 300);
    showActive(&window);
    HtmlTextBrowser *browser = browserOf(window);
    for (const QString &link : QStringList{
             "ssh://a.example/", "SMB://b.example/share", "vscode://file/x", "JavaScript:alert(1)",
             "java&#115;cript:alert(1)", " javascript:alert(1)", "&#1;ssh:a", "java\tscript:a",
             "data:text/html,x", "tel:+1", "ftp://c.example/", "x-program:a b"}) {
        browser->setText("<a href=\"" + link + "\">a link</a> and text");
        clickLink(browser);
        QCOMPARE(QToolTip::text(), words);
        QToolTip::hideText();
        browser->moveCursor(QTextCursor::Start);
        press(&window, Qt::Key_Tab);
        QCOMPARE(spoken(browser, QAccessible::Description), words);
        press(&window, Qt::Key_Return);
        QCOMPARE(QToolTip::text(), words);
        QToolTip::hideText();
        QHelpEvent hover(QEvent::ToolTip, browser->cursorRect().center(), QPoint(50, 50));
        QCoreApplication::sendEvent(browser->viewport(), &hover);
        QCOMPARE(QToolTip::text(), words);
        QToolTip::hideText();
        browser->moveCursor(QTextCursor::End);
        QCOMPARE(spoken(browser, QAccessible::Description), QString());
        QVERIFY2(m_opened.isEmpty() && browser->toPlainText() == "a link and text",
                 qPrintable(link));
    }
}

void HelpPageTest::leavesLinksToTheirHost()
{
    HtmlTextBrowser browser;
    browser.resize(300, 200);
    showActive(&browser);
    browser.setText("<a href=\"app:do?this\">a link</a>");
    QSignalSpy clicked(&browser, &QTextBrowser::anchorClicked);
    browser.setOpenLinks(false);
    for (const bool external : {false, true}) {
        browser.setOpenExternalLinks(external);
        clickLink(&browser);
        browser.moveCursor(QTextCursor::Start);
        press(&browser, Qt::Key_Tab);
        press(&browser, Qt::Key_Return);
    }
    QCOMPARE(clicked.count(), 4);
    QCOMPARE(clicked.last().first().toUrl(), QUrl("app:do?this"));
    QVERIFY(browser.source().isEmpty());
}

void HelpPageTest::goesBackAndForth()
{
    HelpWindow window(context("first.html"), nullptr);
    window.resize(400, 300);
    HtmlTextBrowser *browser = browserOf(window);
    QTRY_COMPARE(spoken(browser), "First");
    showActive(&window);
    QVERIFY(!shows(window, "Back") && !shows(window, "Forward"));
    const auto isAt = [&](const char *title) {
        return spoken(browser) == title && browser->documentTitle() == title;
    };

    browser->moveCursor(QTextCursor::Start);
    press(&window, Qt::Key_Tab);
    press(&window, Qt::Key_Tab);
    const int top = browser->verticalScrollBar()->value();
    QVERIFY(top > 0);
    press(&window, Qt::Key_Return);
    QVERIFY(browser->verticalScrollBar()->value() > top + window.height());
    press(&window, Qt::Key_Backspace);
    // The bar takes its height from the page, and the link stays in sight.
    const int read = browser->verticalScrollBar()->value();
    QVERIFY(read >= top && read <= top + browser->y());
    QCOMPARE(browser->textCursor().selectedText(), "end");

    browser->setSource(QUrl("next.html"));
    QVERIFY(isAt("Next"));
    press(&window, Qt::Key_Left, Qt::AltModifier);
    QVERIFY(isAt("First"));
    QCOMPARE(browser->verticalScrollBar()->value(), read);
    // A place in the text is still one in the text, not in the page that was there before.
    press(&window, Qt::Key_Return);
    QVERIFY(isAt("First") && browser->verticalScrollBar()->value() > read);
    press(&window, Qt::Key_Backspace);
    browser->setSource(QUrl("next.html"));
    clickLink(browser, Qt::BackButton);
    QVERIFY(isAt("First"));
    clickLink(browser, Qt::ForwardButton);
    QVERIFY(isAt("Next"));

    QVERIFY(!named(window, "Forward")->isEnabled());
    QCOMPARE(named(window, "Back")->toolTip(), "Back");
    click(named(window, "Back"));
    QVERIFY(isAt("First"));
    named(window, "Forward")->setFocus();
    press(&window, Qt::Key_Return);
    QVERIFY(isAt("Next"));
    QVERIFY2(browser->hasFocus(), "the keyboard stays on a button that is disabled");
    named(window, "Back")->setFocus();
    press(&window, Qt::Key_Back);
    QVERIFY(isAt("First"));
    press(&window, Qt::Key_Right, Qt::AltModifier);
    QVERIFY(isAt("Next"));
}

void HelpPageTest::beginsAnewWithANewText()
{
    HelpWindow window(context("first.html"), nullptr);
    window.resize(400, 300);
    window.show();
    HtmlTextBrowser *browser = browserOf(window);
    QTRY_COMPARE(spoken(browser), "First");
    browser->setSource(QUrl("next.html"));
    QVERIFY(shows(window, "Back"));
    window.fallbackOffline();
    QCOMPARE(spoken(browser), "First");
    QVERIFY(!shows(window, "Back"));
    browser->setSource(QUrl("next.html"));
    browser->backward();
    QCOMPARE(spoken(browser), "First");
    QVERIFY(!browser->isBackwardAvailable());

    // Plain text, and one that a host shows without a history.
    browser->setText("a < b\nc");
    browser->setSource(QUrl("next.html"));
    browser->backward();
    QCOMPARE(browser->toPlainText(), "a < b\nc");
    HtmlTextBrowser other;
    other.setText("<p>text</p>");
    QVERIFY(other.source().isEmpty() && !other.isBackwardAvailable());
}

void HelpPageTest::mirrorsItsHistory()
{
    HelpWindow window(context("first.html"), nullptr);
    window.setLayoutDirection(Qt::RightToLeft);
    window.resize(400, 300);
    HtmlTextBrowser *browser = browserOf(window);
    QTRY_COMPARE(spoken(browser), "First");
    showActive(&window);
    browser->setSource(QUrl("next.html"));
    const auto *back = qobject_cast<KovaIconButton *>(named(window, "Back"));
    QVERIFY(back->geometry().left() > named(window, "Forward")->geometry().left());
    QCOMPARE(back->size(), QSize(kovaPx(28), kovaPx(28)));
    const QImage arrow = back->icon().pixmap(16).toImage();
    QCOMPARE(arrow, ImageManager::getInstance()
                        ->getIcon("bt_pagebar_next", ImageManager::Default)
                        .pixmap(16)
                        .toImage());
    press(&window, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(spoken(browser), "First");
    press(&window, Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(spoken(browser), "Next");
}

void HelpPageTest::saysThatItLoadsOrCannot()
{
    HttpServer server;
    server.hold();
    HelpWindow::setKnowledgeBaseHost(server.base());
    const QString loading = "Loading the page…";
    const QString failed = "The page could not be loaded.";
    HelpWindow window(context("missing.html"), nullptr);
    window.resize(400, 300);
    showActive(&window);
    QVERIFY(shows(window, loading) && !shows(window, "Try again"));
    QCOMPARE(
        QAccessible::queryAccessibleInterface(window.findChild<QWidget *>("pageNotice"))->role(),
        QAccessible::AlertMessage);
    QTRY_COMPARE(server.openRequests(), 1);
    server.release();
    QTRY_VERIFY(shows(window, failed) && !shows(window, loading));

    server.answer(m_path, "<p>article</p>");
    press(&window, Qt::Key_Return);
    QVERIFY(shows(window, loading) && browserOf(window)->hasFocus());
    QTRY_COMPARE(server.openRequests(), 1);
    server.release();
    QTRY_COMPARE(browserOf(window)->toPlainText(), "article");
    QVERIFY(!shows(window, loading) && !shows(window, failed));

    // A page that is there stays in sight, and what is said of the new one lies beside it.
    window.reload(QUrl(server.base() + "elsewhere"));
    QVERIFY(!window.findChild<QLabel *>()->isVisible());
    QTRY_COMPARE(server.openRequests(), 1);
    server.release();
    QTRY_VERIFY(shows(window, failed));
    QCOMPARE(browserOf(window)->toPlainText(), "article");
    QCoreApplication::processEvents();
    QVERIFY(window.findChild<QWidget *>("pageNotice")->geometry().top()
            > browserOf(window)->geometry().bottom());
}

void HelpPageTest::saysThatALinkLeadsNowhere()
{
    HelpWindow window(context("first.html"), nullptr);
    window.resize(400, 300);
    QTRY_COMPARE(spoken(browserOf(window)), "First");
    showActive(&window);
    QTest::ignoreMessage(QtWarningMsg, "QTextBrowser: No document for gone.html");
    browserOf(window)->setSource(QUrl("gone.html"));
    QVERIFY(shows(window, "The page could not be loaded."));
    writeScratchFile("help/enu/gone.html", "<p>here again</p>");
    click(named(window, "Try again"));
    QTRY_COMPARE(browserOf(window)->toPlainText(), "here again");
    QVERIFY(!shows(window, "The page could not be loaded."));
    press(&window, Qt::Key_Backspace);
    QCOMPARE(spoken(browserOf(window)), "First");
    QVERIFY(QFile::remove(scratchFolder() + "/help/enu/gone.html"));
}

void HelpPageTest::findsWords()
{
    BrowserWindow window(nullptr);
    window.resize(400, 300);
    showActive(&window);
    HtmlTextBrowser *browser = browserOf(window);
    browser->setText("<p>A needle</p>" + QString("<p>hay</p>").repeated(200) + "<p>Needle</p>");
    const QPair<QString, int> first("needle", 2);
    const QPair<QString, int> second("Needle", 9 + 200 * 4);

    press(&window, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(shows(window, "Find in page"));
    type(window, "needle");
    QCOMPARE(highlighted(window), first);
    QCOMPARE(spoken(named(window, "Find in page"), QAccessible::Description), "A needle");
    press(&window, Qt::Key_Return);
    QCOMPARE(highlighted(window), second);
    QVERIFY(browser->viewport()->rect().contains(browser->cursorRect()));
    press(&window, Qt::Key_F3);
    QCOMPARE(highlighted(window), first);
    press(&window, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(highlighted(window), second);
    press(&window, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(highlighted(window), first);
    click(named(window, "Previous match"));
    QCOMPARE(highlighted(window), second);
    named(window, "Next match")->setFocus();
    press(&window, Qt::Key_Return);
    QCOMPARE(highlighted(window), first);

    press(&window, Qt::Key_F, Qt::ControlModifier);
    type(window, "pin");
    QVERIFY(shows(window, "No matches"));
    QVERIFY(spoken(named(window, "Find in page"), QAccessible::Description).contains("No matches"));
    QCOMPARE(highlighted(window).first, QString());
    browser->setText("<p>a pin and a needle</p>");
    QVERIFY2(!shows(window, "No matches"), "is said of another page");
    press(&window, Qt::Key_Return);
    QCOMPARE(highlighted(window), qMakePair(QString("pin"), 2));

    press(&window, Qt::Key_Escape);
    QVERIFY(window.isVisible() && !shows(window, "Find in page"));
    QVERIFY(browser->hasFocus() && browser->extraSelections().isEmpty());
    QCOMPARE(browser->textCursor().selectedText(), "pin");
    press(&window, Qt::Key_Escape);
    QTRY_VERIFY(!window.isVisible());
}

void HelpPageTest::wearsTheTheme()
{
    const QString dark = writeScratchFile(
        "dark.qss", "== component.help_page ==\n"
                    "QTextBrowser { border: none; background-color: #101010; color: #EEEEEE; "
                    "qproperty-pageMargin: 40; }\n"
                    "== component.help_document ==\na { color: #88CCFF; }\n");
    StyleManager::getInstance()->initialize({dark});
    QWidget parent;
    parent.setStyleSheet("QToolTip { color: red; }");
    BrowserWindow window(&parent);
    window.resize(400, 300);
    HtmlTextBrowser *browser = browserOf(window);
    browser->setText("<a href=\"https://a.example/\">link</a>");
    showActive(&window);
    QCOMPARE(browser->verticalScrollBar()->sizeHint().width(), kovaPx(12));
    QCOMPARE(window.grab().toImage().pixelColor(10, 200), QColor("#101010"));
    QCOMPARE(browser->palette().color(QPalette::Text), QColor("#EEEEEE"));
    QTextCursor link(browser->document());
    link.movePosition(QTextCursor::NextCharacter);
    QCOMPARE(link.charFormat().foreground().color(), QColor("#88CCFF"));
    QCOMPARE(browser->document()->documentMargin(), 40 * DPIinfo::getInstance()->getDPI());
}

QTEST_MAIN(HelpPageTest)
#include "help-page-test.moc"
