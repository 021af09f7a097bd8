// SPDX-License-Identifier: MIT

#include "support/http-server.h"
#include "support/pictures.h"
#include "support/test-host.h"

#include <kovakit-qt/widgets/html-text-browser.h>

#include <QScrollBar>
#include <QtTest>

namespace {

QString lines(const QString &word, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QString("<p>%1 %2.</p>").arg(word).arg(i);
    return text;
}

QString nameOf(int picture)
{
    return QString("../image/%1.png").arg(picture);
}

QString picture(int index)
{
    return "<img src=\"" + nameOf(index) + "\">";
}

} // namespace

// Pictures arrive while somebody reads.
class HtmlReadingPlaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TMPDIR", QFile::encodeName(scratchFolder())); }
    void init();
    void textStaysWhereItIsRead_data();
    void textStaysWhereItIsRead();
    void topAndEndStay();
    void pageLooksAsIfAllHadBeenThere();

private:
    // Shows a page whose pictures have @p size at the server.
    void open(const QString &body, const QSize &size = {200, 150});
    // Lets the next picture arrive, and waits until it shows.
    void showNext();
    void scrollTo(const QString &text, int heightInView);
    int heightOf(const QString &text) const;
    int shownPictures() const;
    QScrollBar *bar() const { return m_browser->verticalScrollBar(); }

    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<HtmlTextBrowser> m_browser;
    QSize m_size;
};

void HtmlReadingPlaceTest::init()
{
    QDir(QDir::tempPath() + "/kovaline_help").removeRecursively();
    m_server = std::make_unique<HttpServer>();
    m_server->hold();
    m_browser = std::make_unique<HtmlTextBrowser>(nullptr);
    m_browser->resize(400, 300);
    m_browser->show();
}

void HtmlReadingPlaceTest::open(const QString &body, const QSize &size)
{
    m_size = size;
    for (int i = 0; i < 4; ++i)
        m_server->answer(nameOf(i).mid(2), pngFile(size));
    m_browser->setText(QString("<html><base href=\"%1x/\">").arg(m_server->base()) + body);
    m_browser->grab();
}

void HtmlReadingPlaceTest::showNext()
{
    const int before = shownPictures();
    QTRY_VERIFY(m_server->openRequests() > 0);
    m_server->release();
    QTRY_COMPARE(shownPictures(), before + 1);
}

// Of the lower edge of its line; a picture in the line lifts the upper one.
int HtmlReadingPlaceTest::heightOf(const QString &text) const
{
    return m_browser->cursorRect(m_browser->document()->find(text)).bottom();
}

void HtmlReadingPlaceTest::scrollTo(const QString &text, int heightInView)
{
    bar()->setValue(bar()->value() + heightOf(text) - heightInView);
    QCOMPARE(heightOf(text), heightInView);
}

int HtmlReadingPlaceTest::shownPictures() const
{
    int count = 0;
    for (int i = 0; i < 4; ++i) {
        const QVariant shown =
            m_browser->document()->resource(QTextDocument::ImageResource, QUrl(nameOf(i)));
        count += shown.value<QPixmap>().size() == m_size;
    }
    return count;
}

void HtmlReadingPlaceTest::textStaysWhereItIsRead_data()
{
    const QString before = lines("before", 40);
    const QString after = lines("after", 40);
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("read");
    QTest::addColumn<int>("heightInView");
    const auto row = [](const char *name, const QString &body, const char *read = "after 10.",
                        int height = 25) {
        QTest::newRow(name) << body << QString(read) << height;
    };
    row("several above", picture(0) + before + picture(1) + picture(2) + after);
    row("half in view", before + picture(0) + after, "after 0.", 40);
    row("in view", before + picture(0) + after, "after 0.", 60);
    row("in the line", before + "<p>line with " + picture(0) + "</p>" + after, "line with");
    row("in tables", "<table><tr><td>a</td><td>" + picture(0) + "</td></tr><tr><td>" + picture(1)
                         + "</td><td>" + after + "</td></tr></table>" + picture(2));
    row("below", before + after + picture(0), "before 10.");
    row("near the top", lines("before", 2) + picture(0) + after, "after 3.");
}

void HtmlReadingPlaceTest::textStaysWhereItIsRead()
{
    QFETCH(QString, body);
    QFETCH(QString, read);
    QFETCH(int, heightInView);
    // What an earlier page has left may be larger than what arrives.
    for (const QSize &size : {QSize(200, 150), QSize(20, 30)}) {
        open(body, size);
        QTextCursor selection = m_browser->textCursor();
        selection.setPosition(3);
        selection.setPosition(7, QTextCursor::KeepAnchor);
        m_browser->setTextCursor(selection);
        scrollTo(read, heightInView);
        for (int i = body.count("<img"); i > 0; --i) {
            showNext();
            const int height = heightOf(read);
            QVERIFY2(qAbs(height - heightInView) <= 1, qPrintable(QString::number(height)));
        }
        QCOMPARE(m_browser->textCursor().selectionStart(), 3);
        QCOMPARE(m_browser->textCursor().selectionEnd(), 7);
    }
}

void HtmlReadingPlaceTest::topAndEndStay()
{
    open(picture(0) + lines("line", 40) + picture(1) + lines("last", 15));
    showNext();
    QCOMPARE(bar()->value(), 0);

    bar()->setValue(bar()->maximum());
    const int last = heightOf("last 14.");
    showNext();
    QCOMPARE(bar()->value(), bar()->maximum());
    QVERIFY(qAbs(heightOf("last 14.") - last) <= 1);
}

void HtmlReadingPlaceTest::pageLooksAsIfAllHadBeenThere()
{
    const QString body =
        "<p>a " + picture(0) + " b</p><ul><li>c " + picture(1) + "</li></ul><table border=\"1\">"
        + "<tr><td>d</td><td>" + picture(2) + "<br>e</td></tr><tr><td>f</td></tr></table><p>"
        + "<img src=\"../image/3.png\" style=\"float: right\">g</p><p>h " + picture(1) + "</p>";
    open(body);
    for (int i = 0; i < 4; ++i)
        showNext();
    HtmlTextBrowser other;
    other.setSearchPaths(m_browser->searchPaths());
    other.resize(m_browser->size());
    other.show();
    other.setHtml(body);
    bar()->setValue(0);
    QCOMPARE(bar()->maximum(), other.verticalScrollBar()->maximum());
    for (int height = 0; height <= bar()->maximum(); height += 100) {
        bar()->setValue(height);
        other.verticalScrollBar()->setValue(height);
        QCOMPARE(m_browser->viewport()->grab().toImage(), other.viewport()->grab().toImage());
    }
}

QTEST_MAIN(HtmlReadingPlaceTest)
#include "html-reading-place-test.moc"
