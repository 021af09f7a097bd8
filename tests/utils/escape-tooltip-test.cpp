#include <kovakit-qt/utils/escape-tooltip.h>

#include <QTextDocument>
#include <QtTest>

class EscapeTooltipTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesAParagraph();
    void showsTheTextAsItIs_data();
    void showsTheTextAsItIs();
};

void EscapeTooltipTest::writesAParagraph()
{
    QCOMPARE(getHtmlEscapedStringForToolTip(QString()), "<p style='white-space:pre'></p>");
    QCOMPARE(getHtmlEscapedStringForToolTip("a<b\nc"),
             "<p style='white-space:pre'>a&lt;b<br>c</p>");
    QCOMPARE(getHtmlEscapedStringForToolTip("\r\n\""),
             "<p style='white-space:pre'>\r<br>&quot;</p>");
}

void EscapeTooltipTest::showsTheTextAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("markup") << "<b>R&D</b> </p> &amp; 'x' \"y\"";
    QTest::newRow("blanks") << "a    b\n\n    indented  ";
    QTest::newRow("other scripts") << "שלום 日本 😀";
}

void EscapeTooltipTest::showsTheTextAsItIs()
{
    QFETCH(QString, text);
    const QString html = getHtmlEscapedStringForToolTip(text);
    QVERIFY(Qt::mightBeRichText(html));
    QTextDocument document;
    document.setHtml(html);
    QCOMPARE(document.toPlainText(), text);
}

QTEST_MAIN(EscapeTooltipTest)
#include "escape-tooltip-test.moc"
