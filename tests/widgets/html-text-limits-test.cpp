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

constexpr int fuzzMilliseconds = 15000;

QString times(int count, const char *text)
{
    return QString::fromLatin1(text).repeated(count);
}

// Milliseconds until all of the text has been laid out and its first page painted.
qint64 show(HtmlTextBrowser &browser, const QString &text)
{
    QElapsedTimer timer;
    timer.start();
    browser.setText(text);
    browser.document()->documentLayout()->documentSize();
    browser.grab();
    return timer.elapsed();
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
    void scansInLinearTime_data();
    void scansInLinearTime();
    void survivesAnything();

private:
    HtmlTextBrowser m_browser{nullptr};
};

void HtmlTextLimitsTest::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    m_browser.resize(600, 400);
    m_browser.show();
}

void HtmlTextLimitsTest::showsExcessPlain_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("tables") << times(1000, "<table><tr><td>x") + times(1000, "</td></tr></table>");
    QTest::newRow("eleven tables") << times(11, "<TABLE border=1><tr><td>x");
    QTest::newRow("long word") << "<p>" + times(1000000, "a") + "</p>";
    QTest::newRow("long word in pieces") << "<p>" + times(50000, "<b>a</b>");
    for (const char *name :
         {"<b>", "<div>", "<ul><li>", "<li><p>", "<h1>", "<unknown>", "<title>", "<option>",
          "< b a=\"</b>\">", "<b a='</b>'>", "<b></i>", "<b a=c\"><b d=\">"})
        QTest::newRow(name) << times(100000, name) + "text";
    QTest::newRow("columns") << "<table><tr>" + times(1000, "<td COLSPAN='20480'>x</td>");
    QTest::newRow("pictures in a row") << "<p>" + times(20000, "<img src=\"a\">");
    QTest::newRow("list items") << "<ul>" + times(30000, "<li>item</li>");
    QTest::newRow("style rules") << "<style>" + times(5000, ".a b { color: red }") + "</style>"
                                        + times(20000, "<p class=a>x</p>");
    QTest::newRow("imports") << "<style>" + times(50, "@import url(a);") + "</style>"
                                    + times(20000, "<p>x</p>");
    QTest::newRow("too long") << times(400000, "<p>word</p> ");
}

void HtmlTextLimitsTest::showsExcessPlain()
{
    QFETCH(QString, text);
    QVERIFY(show(m_browser, text) < patience);
    QVERIFY2(m_browser.toPlainText().contains(QLatin1Char('<')), "the tags do not show");
}

void HtmlTextLimitsTest::laysOutOrdinaryText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("sloppy paragraphs") << times(10000, "<p>some text with <br> a break");
    QTest::newRow("sloppy list") << "<ul>" + times(2000, "<li>item");
    QTest::newRow("sloppy table") << "<table>" + times(3000, "<tr><td>one<td>two");
    QTest::newRow("definitions") << "<dl>" + times(5000, "<dt>name<dd>meaning");
    QTest::newRow("ten tables") << times(10, "<table><tr><td>x") + times(10, "</td></tr></table>");
    QTest::newRow("tables after each other")
        << times(300, "<table><tr><td colspan=\"2\">x</td></tr></table>");
    QTest::newRow("Japanese") << "<p>" + QString(20000, QChar(0x3042));
    QTest::newRow("comment and script") << "<p><!-- " + times(20000, "<b>") + "--> text</p>";
}

void HtmlTextLimitsTest::laysOutOrdinaryText()
{
    QFETCH(QString, text);
    QVERIFY(show(m_browser, text) < patience);
    QVERIFY2(!m_browser.toPlainText().contains(QLatin1Char('<')), "the tags show");
}

void HtmlTextLimitsTest::cutsAndBreaksPlainText()
{
    QVERIFY(show(m_browser, times(3000000, "a")) < patience);
    QVERIFY(m_browser.toPlainText().size() <= 500001);
    QVERIFY(m_browser.toPlainText().endsWith(QChar(0x2026)));
    const QStringList lines = m_browser.toPlainText().split(QLatin1Char('\n'));
    for (const QString &line : lines)
        QVERIFY(line.size() <= 5001);

    const QString ordinary = times(1000, "just text, 1 > 0 & more\n");
    m_browser.setText(ordinary);
    QCOMPARE(m_browser.toPlainText(), ordinary);
}

void HtmlTextLimitsTest::scansInLinearTime_data()
{
    QTest::addColumn<QString>("text");
    const QString base = "<html><base href=\"http://127.0.0.1:1/\">";
    QTest::newRow("pictures without an end") << base + times(2000000, "<img ");
    QTest::newRow("sources without an end") << base + times(1000000, "<img src=");
    QTest::newRow("bases without an end") << times(800000, "<base href=");
    QTest::newRow("quotes") << base + "<img " + times(10000000, "\"");
    QTest::newRow("open angles") << base + times(10000000, "<");
}

void HtmlTextLimitsTest::scansInLinearTime()
{
    QFETCH(QString, text);
    const QString page = text.left(490000);
    QElapsedTimer timer;
    timer.start();
    m_browser.setText(page);
    m_browser.setText(text);
    m_browser.setText(QString());
    QVERIFY(timer.elapsed() < patience / 2);
}

void HtmlTextLimitsTest::survivesAnything()
{
    const QStringList pieces = {
        "<base href=\"http://127.0.0.1:1/",
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
        QString(QChar::Null),
        QString(QChar(0xD800)),
        QString(QChar(0xDC00)),
        QString(QChar(0xFFFF)),
        " ",
        "wörd",
        "<img width=9 height=0 src=\"file:///etc/passwd\">",
        "<body background=\"a.png\">",
        "<link rel=stylesheet href=\"s.css\">",
    };
    std::mt19937 random(20240501);
    QElapsedTimer timer;
    timer.start();
    for (int round = 0; round < 1500 && timer.elapsed() < fuzzMilliseconds; ++round) {
        QString text = "<p>";
        for (unsigned i = random() % 60; i > 0; --i)
            text += pieces.at(int(random() % unsigned(pieces.size())));
        QVERIFY2(show(m_browser, text) < patience, qPrintable(text));
        if (round % 10 == 0)
            QCoreApplication::processEvents();
    }
    m_browser.setText(QString());
}

QTEST_MAIN(HtmlTextLimitsTest)
#include "html-text-limits-test.moc"
