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
    row("<unknown>", open, "<br><area><base><col><frame><hr><img><input><link><meta><param><i/>");
    row("<ul><li>", open / 2);
    row("<p><i>", open / 2);
    row("<TABLE border=1>", Browser::maxOpenTables);
    row("<li>", Browser::maxListItems, "<ul>");
    row("<td COLSPAN='2'>", Browser::maxSpannedColumns / 2, "<table><tr><td colspan=1>");
    row("a ", (Browser::maxTextLength - 3) / 2, "<p>a");

    const int letters = Browser::maxWordLength;
    row("<i>a</i>", letters, "<p>");
    row("<img>", letters / 4, "<p>");
    QString words = "<p>";
    for (const QString &name : QString("address blockquote body br center dd div dl dt h1 h2 h3 h4 "
                                       "h5 h6 hr li ol p pre table tbody td tfoot th thead tr ul")
                                   .split(' '))
        words += times(letters, "a") + '<' + name + '>' + times(letters, "a") + "</" + name + '>';
    row("a", letters, words);

    // Rules times elements, the element that holds the rules among them.
    const int elements = 1250;
    const int rules = int(Browser::maxStyleSteps / elements);
    row("<br>", elements - 1, "<style>" + times(rules, "{} ") + "</style>");
    row("<hr>", elements - 1, "<style>@@@@@</style>@@@@@");
    row("<col>", elements - 5, "<link><link><link><link><link>");
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
    const QString groups = "thead tbody tfoot tr td th p";
    const QPair<QString, QString> endedBy[] = {
        {"p", "p"},        {"li", "li"},      {"dd", "dd dt"},      {"dt", "dd dt"},
        {"td", "td th p"}, {"th", "td th p"}, {"tr", "tr td th p"}, {"tbody", groups},
        {"thead", groups}, {"tfoot", groups}};
    const QString deep = times(HtmlTextBrowser::maxOpenElements - 1, "<b>");
    for (const auto &[opened, ended] : endedBy) {
        for (const QString &open : ended.split(' ')) {
            m_browser.setText(deep + '<' + open + "><" + opened + '>');
            QVERIFY2(!showsTags(), qPrintable(opened + " does not end " + open));
        }
    }
}

void HtmlTextLimitsTest::laysOutOrdinaryText_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QString &text) { QTest::newRow(name) << text; };
    row("sloppy paragraphs", times(10000, "<p>some text with <br> a break"));
    row("sloppy list", "<ul>" + times(2000, "<li>item"));
    row("sloppy table", "<table>" + times(2000, "<tr><th>one<td>two<th>three<td><p>four"));
    row("definitions", "<dl>" + times(3000, "<dt>name<dt>other<dd>meaning<dd>more"));
    row("tables in a row", times(300, "<table><tr><td colspan=\"2\">x</td></tr></table>"));
    row("Japanese", "<p>" + times(20000, "あ"));
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
