// SPDX-License-Identifier: MIT

#include "support/test-host.h"

#include <kovakit-qt/widgets/html-text-browser.h>

#include <QAbstractTextDocumentLayout>
#include <QtTest>

#include <random>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int patience = 40000;
#else
constexpr int patience = 8000;
#endif

QString times(int count, const char *text)
{
    return QString(text).repeated(count);
}

} // namespace

class HtmlTextLimitsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void limitsAreExact_data();
    void limitsAreExact();
    void endsOpenElements();
    void showsHostilePagesPlain_data();
    void showsHostilePagesPlain();
    void boundsMarkdownPages();
    void stepsGrowAsTheLayoutDoes();
    void boundsPlainText();
    void laysOutOrdinaryText_data();
    void laysOutOrdinaryText();
    void cutsAndBreaksPlainText();
    void scansInLinearTime();
    void survivesAnything();

private:
    // Whether all of the text is laid out and its first page painted in good time.
    bool showsInTime(const QString &text);
    bool showsTags() const { return m_browser.toPlainText().contains('<'); }

    HtmlTextBrowser m_browser{nullptr};
};

void HtmlTextLimitsTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    m_browser.resize(600, 400);
    m_browser.show();
}

bool HtmlTextLimitsTest::showsInTime(const QString &text)
{
    QElapsedTimer timer;
    timer.start();
    m_browser.setText(text);
    m_browser.document()->documentLayout()->documentSize();
    m_browser.grab();
    return timer.elapsed() < patience;
}

// One more of the row's text is too much.
void HtmlTextLimitsTest::limitsAreExact_data()
{
    using Browser = HtmlTextBrowser;
    QTest::addColumn<QString>("within");
    QTest::addColumn<QString>("more");
    const auto row = [](const char *text, int count, const QString &before = {}) {
        QTest::newRow(text) << before + times(count, text) << QString(text);
    };
    const int open = Browser::maxOpenElements;
    row("<b>", open);
    row("< b a=\"</b>\">", open);
    row("<b a='\\'</b>'></i>", open);
    row("<unknown>", open, "<br><hr><img><meta><i/>");
    row("<ul><li>", open / 2);
    row("<div><i>", open / 2);
    row("a ", (Browser::maxTextLength - 3) / 2, "<p>a");

    const int letters = Browser::maxWordLength;
    row("<i>a</i>", letters, "<p>");
    QString words = "<p>";
    for (const QString &name :
         QString("blockquote br center div h1 h2 h3 h4 h5 h6 hr li ol p pre ul").split(' '))
        words +=
            times(letters, "a") + '<' + name + '>' + times(letters, "a") + "</" + name + "><p>";
    row("a", letters, words);
}

void HtmlTextLimitsTest::limitsAreExact()
{
    QFETCH(QString, within);
    QFETCH(QString, more);
    QElapsedTimer timer;
    timer.start();
    m_browser.setText(within);
    QVERIFY2(!showsTags(), "within the limit the tags show");
    m_browser.setText(within + more);
    QVERIFY2(showsTags(), "beyond the limit the tags do not show");
    QVERIFY(timer.elapsed() < patience);
}

// With all but one of the elements open, the last two fit only if the second ends the first.
void HtmlTextLimitsTest::endsOpenElements()
{
    const QString deep = times(HtmlTextBrowser::maxOpenElements - 4, "<b>") + "<table>";
    for (const QString &pair :
         QString("<p><p>|<ul><li><li>|<tr><td><td>|<tr><td><th>|<tr><td><tr>|<tr><tr>|"
                 "<tr><td><tbody>|<thead><tr><tfoot>|<tbody><tr><caption>|<head><div><body>")
             .split('|')) {
        m_browser.setText(deep + pair);
        QVERIFY2(!showsTags(), qPrintable(pair));
    }
    m_browser.setText(deep + "<div><div><div><div>");
    QVERIFY(showsTags());
}

void HtmlTextLimitsTest::showsHostilePagesPlain_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QString &text) { QTest::newRow(name) << text; };
    row("short rows, one wide", "<table>" + times(100, "<tr>") + times(100, "<td>"));
    row("one long row", "<table><tr>" + times(120000, "<td>"));
    row("many rows", "<table>" + times(9000, "<tr><td>a<td>b"));
    row("columns of spans", "<table>" + times(500, "<tr><td colspan=100>a"));
    row("rows of spans", "<table>" + times(2000, "<tr><td rowspan=60000>"));

    // Each of them is some 20 million slots if it is read as it should not be.
    const auto spans = [&row](const char *cell) {
        row(cell, "<table>" + times(1000, "<tr>").append(cell).repeated(8));
    };
    spans("<td colspan=20480>");
    spans("<TD a=1 COLSPAN = '20480'>");
    spans("<td colspan=\"&#50;0480\">");
    spans("<t&#x64; colspan=&#50;0480>");
    spans("<td b='\\'' colspan=20480>");
    spans("<td colspan=1 colspan=99999>");
    spans("<!-><td>--><td colspan=20480>");
    spans("<title></title><script><td colspan=20480>");
    row("counted again and again", "<table><tr>" + times(20000, "<>") + "<td colspan=20480>a");
    row("after a fragment", "<style><!--StartFragment--><table>" + times(9000, "<tr><td>a<td>b"));
    row("a style without tables", "<style><p></style><table>" + times(9000, "<tr><td>a<td>b"));

    row("nested", times(9, "<table><tr><td>") + times(500, "<p>text"));
    row("nested without a sign of it",
        "<table><tr><td>x</td>" + times(20, "<table><tr><td>a</table>"));
    row("floating pictures", times(700, "<img align=left src=a>"));
    row("floating tables", times(9000, "<table style='flo\\61t:left'><tr><td>a</table>"));
    row("floats by class", "<style>.a{float:right}</style>" + times(700, "<img class=a src=a>"));
    row("pictures in one paragraph", times(18000, "<img src=a>"));
    row("marks", "<p>a" + times(450000, "\u0301"));
    row("marks in numbers", "<p>a" + times(50000, "&#x301;"));
    row("joined emoji", "<p>" + times(90000, "\U0001F468\u200d"));
    row("a line that does not break", "<nobr>" + times(50000, "word "));
    row("letters of many alphabets",
        "<p>" + times(10, "aаαא").repeated(100).append(' ').repeated(50));
    row("fonts", [] {
        QString text;
        for (int i = 0; i < 3000; ++i)
            text += QString("<font face=f%1>a</font> ").arg(i);
        return text;
    }());
    row("names of places", [] {
        QString text;
        for (int i = 0; i < 9000; ++i)
            text += QString("<p id=a%1>a").arg(i);
        return text;
    }());
    for (const char *tag : {"<p background=a>a", "<p style='BACKGROUND: url(a)'>a"})
        row(tag, times(9000, tag));
    row("list", "<ul>" + times(10000, "<li>item"));
    row("deep", times(900, "<b>") + times(40000, "<br>"));
    row("closed again and again", times(900, "<b>") + times(100000, "</i>"));
    row("rules", "<style>" + times(500, "p{color:red}") + "</style>" + times(5000, "<p>x"));
    row("rules with many selectors",
        "<style>" + times(500, "p,") + "p{}</style>" + times(5000, "<p>x"));
    row("rules hidden by a comment",
        "<style>/*{*/" + times(500, "p,") + "p{}</style>" + times(5000, "<p>x"));
    row("rules read again and again",
        "<style>" + times(2000, "p{}") + times(20000, "</b>") + "</style>");
    row("long classes", "<style>" + times(300, ".x{}") + "</style><p class='" + times(20000, "a ")
                            + "'>" + times(1000, "<i>"));
}

void HtmlTextLimitsTest::showsHostilePagesPlain()
{
    QFETCH(QString, text);
    QVERIFY(m_browser.layoutSteps(text) > HtmlTextBrowser::maxLayoutSteps);
    QVERIFY(showsInTime(text));
    QVERIFY(m_browser.document()->rootFrame()->childFrames().isEmpty());
    QVERIFY2(showsTags() || text.startsWith("<style><!--"), "it is laid out");
}

// Every table around it doubles what a page takes, and so does twice the text.
void HtmlTextLimitsTest::boundsMarkdownPages()
{
    m_browser.setSearchPaths({scratchFolder() + "/pages"});
    int pages = 0;
    const auto shown = [&](const QString &text) {
        const QString name = QString("page-%1.md").arg(++pages);
        writeScratchFile("pages/" + name, text.toUtf8());
        m_browser.setSource(QUrl(name), QTextDocument::MarkdownResource);
        return m_browser.toPlainText();
    };
    const auto table = [](int columns, int rows) {
        const auto line = [columns](const char *cell) { return times(columns, cell) + "|\n"; };
        return line("|a") + line("|---") + line("|b").repeated(rows);
    };
    QCOMPARE(shown("# Title\n\nSome *text*."), "Title\nSome text.");
    QVERIFY(!shown(table(4, 30)).contains('|'));
    // A plain text that was read as Markdown again would be the same table.
    for (const QString &text : {table(100, 120), table(2, 9000), table(4, 100)})
        QVERIFY(shown(text).contains("|---"));
    QVERIFY(shown("|a|b|\n|---|---|\n" + times(300, "x\n")).contains("|---"));
}

void HtmlTextLimitsTest::stepsGrowAsTheLayoutDoes()
{
    const auto steps = [this](int tables, int paragraphs) {
        return double(m_browser.layoutSteps(times(tables, "<table><tr><td>")
                                            + times(paragraphs, "<p>text of a paragraph")));
    };
    for (int tables = 1; tables < 4; ++tables) {
        const double growth = steps(tables + 1, 400) / steps(tables, 400);
        QVERIFY2(growth > 1.8 && growth < 2.1, qPrintable(QString::number(growth)));
    }
    const double growth = steps(2, 800) / steps(2, 400);
    QVERIFY2(growth > 1.9 && growth < 2.1, qPrintable(QString::number(growth)));
}

// What is shown plain must not take long in its turn.
void HtmlTextLimitsTest::boundsPlainText()
{
    for (const QString &text :
         {QString("a") + times(450000, "\u0301"), times(200000, "日本"), times(120000, "aаαא"),
          times(240000, "\U0001F468"), times(240000, "x\n")})
        QVERIFY2(showsInTime(text), qPrintable(text.left(4)));
    const QString shown = (m_browser.setText("a" + times(450, "\u0301")), m_browser.toPlainText());
    QCOMPARE(shown.count('\n'), 4);
}

void HtmlTextLimitsTest::laysOutOrdinaryText_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QString &text) { QTest::newRow(name) << text; };
    row("sloppy paragraphs", times(10000, "<p>some text with <br> a break"));
    row("sloppy list", "<ul>" + times(2000, "<li>item"));
    row("sloppy table", "<table>" + times(1500, "<tr><th>one<td>two<th>three<td><p>four"));
    row("definitions", "<dl>" + times(3000, "<dt>name<dt>other<dd>meaning<dd>more"));
    row("tables in a row", times(300, "<table><tr><td colspan=\"2\">x</td></tr></table>"));
    row("Japanese", "<p>" + times(20000, "あ"));
    row("cells", "<table border=1>" + times(1000, "<tr><td>one<td>two<td>three<td>four<td>five"));
    row("table in a table", "<table><tr><td>" + times(20, "<table><tr><td>a<td>b</table>"));
    row("pictures", times(800, "<p><img src=a></p>text of some words"));
    row("table of pictures", "<table>" + times(500, "<tr><td><img src=a><td>text"));
    row("pictures beside texts", times(300, "<p><img align=left src=a>text"));
    row("Japanese paragraphs", times(1000, "<p>日本語の文章です。これは日本語の文章です。"));
    row("Chinese with names", times(2000, "<p>点击 OK 按钮，打开 Settings 对话框。"));
    row("Arabic", times(2000, "<p>صف خلق خود كمثل الشمس إذ بزغت"));
    row("styled", "<style>/* \"head\" */ .a, td.b { font-family: 'Sans' } h1, p { margin: 4px } "
                      + times(40, ".c{color:red;margin:2px}") + "</style>"
                      + times(1000, "<div class=a><p class=d>text</p></div>"));
    row("comment and script", "<p><!-- " + times(20000, "<b>") + "--> text</p>");
}

void HtmlTextLimitsTest::laysOutOrdinaryText()
{
    QFETCH(QString, text);
    QVERIFY(showsInTime(text));
    QVERIFY2(!showsTags(), "the tags show");
}

void HtmlTextLimitsTest::cutsAndBreaksPlainText()
{
    QVERIFY(showsInTime(times(3000000, "a")));
    const int count = HtmlTextBrowser::maxTextLength;
    const QString shown = m_browser.toPlainText();
    QCOMPARE(shown.size(), count + 1);
    QVERIFY(shown.endsWith("…"));
    QCOMPARE(shown.indexOf('\n'), HtmlTextBrowser::maxWordLength);
    QCOMPARE(shown.count('\n'), (count - 1) / (HtmlTextBrowser::maxWordLength + 1));

    // Also where only the line feeds make it too long, and where one would be the last character.
    const int lastWord = (count - 1) % (HtmlTextBrowser::maxWordLength + 1) + 1;
    for (const QString &text : {times(count, "a"), times(lastWord, " ") + times(count, "a")}) {
        QVERIFY(showsInTime(text));
        const QString cut = m_browser.toPlainText();
        QVERIFY2(cut.size() <= count + 1 && cut.endsWith("…"), qPrintable(cut.right(9)));
    }

    const QString ordinary = times(1000, "just text, 1 > 0 & more\n");
    m_browser.setText(ordinary);
    QCOMPARE(m_browser.toPlainText(), ordinary);
}

void HtmlTextLimitsTest::scansInLinearTime()
{
    const QString base = "<html><base href=\"http://127.0.0.1:1/\">";
    for (const QString &text :
         {base + times(2000000, "<img "), base + times(1000000, "<img src="),
          times(800000, "<base href="), base + "<img " + times(10000000, "\""),
          base + times(10000000, "<")}) {
        // Once within the limit of what is scanned at all.
        for (const QString &shown : {text.left(490000), text})
            QVERIFY2(showsInTime(shown), qPrintable(text.left(60)));
    }
}

void HtmlTextLimitsTest::survivesAnything()
{
    QStringList pieces = QString("<base href=\"http://127.0.0.1:1/|<img src=\"|<img|\"|'|>|<|/|<b>|"
                                 "</b>|<p>|<table><tr>|</table>|<td colspan=99999>|<!--|-->|&|"
                                 "&#1114112;|<style>p { background: url(x) }|</style>|wörd |"
                                 "data:image/png;base64,AAAA|<body background=\"a.png\">|"
                                 "<link rel=stylesheet href=\"s.css\">")
                             .split('|');
    for (const int code : {0, 0xD800, 0xDC00, 0xFFFF})
        pieces.append(QChar(code));
    std::mt19937 random(20240501);
    for (int round = 0; round < 200; ++round) {
        QString text = "<p>";
        for (unsigned i = random() % 60; i > 0; --i)
            text += pieces.at(int(random() % unsigned(pieces.size())));
        QVERIFY2(showsInTime(text), qPrintable(text));
    }
}

QTEST_MAIN(HtmlTextLimitsTest)
#include "html-text-limits-test.moc"
