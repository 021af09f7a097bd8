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

constexpr int fuzzMilliseconds = 8000;

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
    void showsExcessPlain_data();
    void showsExcessPlain();
    void laysOutOrdinaryText_data();
    void laysOutOrdinaryText();
    void cutsAndBreaksPlainText();
    void scansInLinearTime();
    void survivesAnything();

private:
    // Milliseconds until all of the text has been laid out and its first page painted.
    qint64 show(const QString &text);

    HtmlTextBrowser m_browser{nullptr};
};

void HtmlTextLimitsTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    m_browser.resize(600, 400);
    m_browser.show();
}

qint64 HtmlTextLimitsTest::show(const QString &text)
{
    QElapsedTimer timer;
    timer.start();
    m_browser.setText(text);
    m_browser.document()->documentLayout()->documentSize();
    m_browser.grab();
    return timer.elapsed();
}

void HtmlTextLimitsTest::showsExcessPlain_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QString &text) { QTest::newRow(name) << text; };
    row("tables", times(1000, "<table><tr><td>x") + times(1000, "</td></tr></table>"));
    row("eleven tables", times(11, "<TABLE border=1><tr><td>x"));
    row("long word", "<p>" + times(1000000, "a") + "</p>");
    row("long word in pieces", "<p>" + times(50000, "<b>a</b>"));
    for (const char *tag :
         {"<b>", "<div>", "<ul><li>", "<li><p>", "<h1>", "<unknown>", "<title>", "<option>",
          "< b a=\"</b>\">", "<b a='</b>'>", "<b></i>", "<b a=c\"><b d=\">"})
        row(tag, times(100000, tag) + "text");
    row("columns", "<table><tr>" + times(1000, "<td COLSPAN='20480'>x</td>"));
    row("pictures in a row", "<p>" + times(20000, "<img src=\"a\">"));
    row("list items", "<ul>" + times(30000, "<li>item</li>"));
    row("style rules", "<style>" + times(5000, ".a b { color: red }") + "</style>"
                           + times(20000, "<p class=a>x</p>"));
    row("imports",
        "<style>" + times(50, "@import url(a);") + "</style>" + times(20000, "<p>x</p>"));
    row("too long", times(400000, "<p>word</p> "));
}

void HtmlTextLimitsTest::showsExcessPlain()
{
    QFETCH(QString, text);
    QVERIFY(show(text) < patience);
    QVERIFY2(m_browser.toPlainText().contains('<'), "the tags do not show");
}

void HtmlTextLimitsTest::laysOutOrdinaryText_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QString &text) { QTest::newRow(name) << text; };
    row("sloppy paragraphs", times(10000, "<p>some text with <br> a break"));
    row("sloppy list", "<ul>" + times(2000, "<li>item"));
    row("sloppy table", "<table>" + times(3000, "<tr><td>one<td>two"));
    row("definitions", "<dl>" + times(5000, "<dt>name<dd>meaning"));
    row("ten tables", times(10, "<table><tr><td>x") + times(10, "</td></tr></table>"));
    row("tables in a row", times(300, "<table><tr><td colspan=\"2\">x</td></tr></table>"));
    row("Japanese", "<p>" + times(20000, "あ"));
    row("comment and script", "<p><!-- " + times(20000, "<b>") + "--> text</p>");
}

void HtmlTextLimitsTest::laysOutOrdinaryText()
{
    QFETCH(QString, text);
    QVERIFY(show(text) < patience);
    QVERIFY2(!m_browser.toPlainText().contains('<'), "the tags show");
}

void HtmlTextLimitsTest::cutsAndBreaksPlainText()
{
    QVERIFY(show(times(3000000, "a")) < patience);
    QVERIFY(m_browser.toPlainText().size() <= 500001);
    QVERIFY(m_browser.toPlainText().endsWith("…"));
    for (const QString &line : m_browser.toPlainText().split('\n'))
        QVERIFY(line.size() <= 5001);

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
        QElapsedTimer timer;
        timer.start();
        // Once within the limit of what is scanned at all.
        m_browser.setText(text.left(490000));
        m_browser.setText(text);
        m_browser.setText(QString());
        QVERIFY2(timer.elapsed() < patience / 2, qPrintable(text.left(60)));
    }
}

void HtmlTextLimitsTest::survivesAnything()
{
    QStringList pieces = {QString(QChar::Null), QChar(0xD800), QChar(0xDC00), QChar(0xFFFF)};
    for (const char *piece : {"<base href=\"http://127.0.0.1:1/",
                              "<img src=\"",
                              "<img",
                              "src=\"",
                              "\"",
                              "'",
                              ">",
                              "<",
                              "/",
                              "../image/",
                              "<table><tr>",
                              "</table>",
                              "<td colspan=99999>",
                              "<!--",
                              "-->",
                              "&",
                              "&#1114112;",
                              "<b>",
                              "</b>",
                              "<p>",
                              "<style>p { background: url(x) }",
                              "</style>",
                              "data:image/png;base64,AAAA",
                              " ",
                              "wörd",
                              "<img width=9 height=0 src=\"file:///etc/passwd\">",
                              "<body background=\"a.png\">",
                              "<link rel=stylesheet href=\"s.css\">"})
        pieces.append(piece);
    std::mt19937 random(20240501);
    QElapsedTimer timer;
    timer.start();
    for (int round = 0; round < 1500 && timer.elapsed() < fuzzMilliseconds; ++round) {
        QString text = "<p>";
        for (unsigned i = random() % 60; i > 0; --i)
            text += pieces.at(int(random() % unsigned(pieces.size())));
        QVERIFY2(show(text) < patience, qPrintable(text));
        if (round % 10 == 0)
            QCoreApplication::processEvents();
    }
    m_browser.setText(QString());
}

QTEST_MAIN(HtmlTextLimitsTest)
#include "html-text-limits-test.moc"
