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
    QCOMPARE(getHtmlEscapedStringForToolTip(QString()),
             QStringLiteral("<p style='white-space:pre'></p>"));
    QCOMPARE(getHtmlEscapedStringForToolTip(QStringLiteral("a<b\nc")),
             QStringLiteral("<p style='white-space:pre'>a&lt;b<br>c</p>"));
    QCOMPARE(getHtmlEscapedStringForToolTip(QStringLiteral("\r\n\"")),
             QStringLiteral("<p style='white-space:pre'>\r<br>&quot;</p>"));
}

void EscapeTooltipTest::showsTheTextAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("markup") << QStringLiteral("<b>R&D</b> </p> &amp; 'x' \"y\"");
    QTest::newRow("blanks") << QStringLiteral("a    b\n\n    indented  ");
    QTest::newRow("other scripts") << QStringLiteral("שלום 日本 😀");
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
