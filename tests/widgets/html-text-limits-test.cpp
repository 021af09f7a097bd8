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
    void limitsAreExact_data();
    void limitsAreExact();
    void knowsTheElements();
    void laysOutOrdinaryText_data();
    void laysOutOrdinaryText();
    void cutsAndBreaksPlainText();
    void scansInLinearTime();
    void survivesAnything();

private:
    // Milliseconds until all of the text has been laid out and its first page painted.
    qint64 show(const QString &text);
    bool showsPlain(const QString &text);

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

bool HtmlTextLimitsTest::showsPlain(const QString &text)
{
    m_browser.setText(text);
    return m_browser.toPlainText().contains('<');
}

void HtmlTextLimitsTest::limitsAreExact_data()
{
    using Browser = HtmlTextBrowser;
    QTest::addColumn<QString>("within");
    QTest::addColumn<QString>("beyond");
    const auto row = [](const char *name, const QString &within, const QString &beyond) {
        QTest::newRow(name) << within << beyond;
    };
    const auto repeated = [&row](const char *text, int count, const char *before = "") {
        row(text, before + times(count, text), before + times(count + 1, text));
    };
    const int wordLength = Browser::maxWordLength;
    repeated("<b>", Browser::maxOpenElements);
    repeated("< b a=\"</b>\">", Browser::maxOpenElements);
    repeated("<b a='\\'</b>'></i>", Browser::maxOpenElements);
    repeated("<unknown>", Browser::maxOpenElements, "<br>");
    repeated("<ul><li>", Browser::maxOpenElements / 2);
    repeated("<TABLE border=1>", Browser::maxOpenTables);
    repeated("<li>", Browser::maxListItems, "<ul>");
    repeated("<td COLSPAN='2'>", Browser::maxSpannedColumns / 2, "<table><tr><td colspan=1>");
    repeated("a", wordLength, "<p>");
    repeated("<i>a</i>", wordLength, "<p>");
    repeated("<img>", wordLength / 4, "<p>");
    repeated("a ", (Browser::maxTextLength - 3) / 2, "<p>a");
    // Rules times elements, the element that holds the rules among them.
    const int elements = 1250;
    const int rules = int(Browser::maxStyleSteps / elements);
    repeated("<br>", elements - 1, qPrintable("<style>" + times(rules, "{} ") + "</style>"));
    repeated("<hr>", elements - 1, "<style>@@@@@</style>@@@@@");
    repeated("<col>", elements - 5, "<link><link><link><link><link>");
}

void HtmlTextLimitsTest::limitsAreExact()
{
    QFETCH(QString, within);
    QFETCH(QString, beyond);
    QElapsedTimer timer;
    timer.start();
    QVERIFY2(!showsPlain(within), "the tags show");
    QVERIFY2(showsPlain(beyond), "the tags do not show");
    QVERIFY(timer.elapsed() < patience);
}

void HtmlTextLimitsTest::knowsTheElements()
{
    const QString word = times(HtmlTextBrowser::maxWordLength, "a");
    const QString deep = times(HtmlTextBrowser::maxOpenElements - 1, "<b>");
    const auto list = [](const char *names) { return QString(names).split(' '); };
    for (const QString &name : list("address blockquote body br center dd div dl dt h1 h2 h3 h4 h5 "
                                    "h6 hr li ol p pre table tbody td tfoot th thead tr ul")) {
        QVERIFY2(!showsPlain("<b>" + word + '<' + name + '>' + word), qPrintable(name));
        QVERIFY2(!showsPlain("<b>" + word + "</" + name + '>' + word), qPrintable(name));
    }
    for (const QString &name : list("area base br col frame hr img input link meta param i/"))
        QVERIFY2(!showsPlain(deep + '<' + name + "><" + name + '>'), qPrintable(name));

    const QPair<const char *, const char *> endedBy[] = {
        {"p", "p"},
        {"li", "li"},
        {"dd", "dd dt"},
        {"dt", "dd dt"},
        {"td", "td th p"},
        {"th", "td th p"},
        {"tr", "tr td th p"},
        {"tbody", "thead tbody tfoot tr td th p"},
        {"thead", "thead tbody tfoot tr td th p"},
        {"tfoot", "thead tbody tfoot tr td th p"},
    };
    for (const auto &[opened, ended] : endedBy) {
        for (const QString &open : list(ended))
            QVERIFY2(!showsPlain(deep + '<' + open + "><" + opened + '>'), qPrintable(open));
        QVERIFY2(showsPlain(deep + "<i><" + opened + '>'), opened);
    }
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
    const int count = HtmlTextBrowser::maxTextLength;
    const QString shown = m_browser.toPlainText();
    QCOMPARE(shown.size(), count + 1);
    QVERIFY(shown.endsWith("…"));
    QCOMPARE(shown.left(count).split('\n').first().size(), HtmlTextBrowser::maxWordLength);
    QCOMPARE(shown.count('\n'), (count - 1) / (HtmlTextBrowser::maxWordLength + 1));

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
