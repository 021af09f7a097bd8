#include <kovakit-qt/style/dpi-info.h>

#include <QRandomGenerator>
#include <QRegExp>
#include <QtTest>

namespace {

// What hosts rely on, written down as the search that defines it: each match is replaced, and the
// search goes on three characters after the start of the match.
QString scaledByRegularExpression(const QString &text, double scale)
{
    QRegExp length("(\\d+\\.?\\d*)(px)");
    const QStringList pieces = text.split(length);
    QString result;
    int piece = 0;
    int offset = 0;
    while ((offset = length.indexIn(text, offset)) >= 0) {
        result += pieces.value(piece++);
        result += QString("%1px").arg(int(length.cap(1).toDouble() * scale));
        offset += 3;
    }
    return result + pieces.value(piece);
}

QString randomText(QRandomGenerator &random, const QString &alphabet, int length)
{
    QString text;
    for (int i = 0; i < length; ++i)
        text += alphabet.at(int(random.bounded(alphabet.size())));
    return text;
}

double scale()
{
    return DPIinfo::getInstance()->getDPI();
}

QString scaled(const QString &text)
{
    return DPIinfo::getInstance()->getScaledStyleSheet(text);
}

} // namespace

class DpiInfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void measuresTheDesktop();
    void cutsLengthsToWholePixels_data();
    void cutsLengthsToWholePixels();
    void equalsTheRegularExpression();
    void survivesHugeNumbers();
};

void DpiInfoTest::measuresTheDesktop()
{
    QCOMPARE(scale(), qEnvironmentVariableIntValue("QT_FONT_DPI") / 96.0);
    QCOMPARE(DPIinfo::getInstance()->getDPR(), 1.0);
    QCOMPARE(kovaPx(22), int(std::floor(22 * scale())));
    QCOMPARE(kovaPx(-22), -kovaPx(22));
    QCOMPARE(kovaPxRounded(31), qRound(31 * scale()));
}

void DpiInfoTest::cutsLengthsToWholePixels_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected"); // at 1, 1.25, 1.5 and 2

    const auto row = [](const char *text, const QStringList &expected) {
        QTest::newRow(text) << QString::fromLatin1(text) << expected;
    };
    row("width: 10px;", {"width: 10px;", "width: 12px;", "width: 15px;", "width: 20px;"});
    row("a 2px 4px b", {"a 2px 4px b", "a 2px 5px b", "a 3px 6px b", "a 4px 8px b"});
    row("0.5px 1.5px", {"0px 1px", "0px 1px", "0px 2px", "1px 3px"});
    row("icon_16px.png", {"icon_16px.png", "icon_20px.png", "icon_24px.png", "icon_32px.png"});
    for (const char *kept : {"8PX 9pt 7 px px", "", "no lengths"}) {
        const QString same = QString::fromLatin1(kept);
        row(kept, {same, same, same, same});
    }
}

void DpiInfoTest::cutsLengthsToWholePixels()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    const int column = QVector<double>{1, 1.25, 1.5, 2}.indexOf(scale());
    QVERIFY(column >= 0);
    QCOMPARE(scaled(text), expected.at(column));
}

void DpiInfoTest::equalsTheRegularExpression()
{
    QRandomGenerator random(20);
    const QString alphabets[] = {
        "0123456789.px ",
        "0.px",
        "019.pxpxP\n-e+:;",
        // Digits of another script match too, but no number can be read from them.
        "12.px" + QChar(0x0663) + QChar(0x0966) + QChar(0x00b2),
    };
    int scaledTexts = 0;
    for (const QString &alphabet : alphabets) {
        for (int i = 0; i < 5000; ++i) {
            const QString text = randomText(random, alphabet, int(random.bounded(24)));
            const QString expected = scaledByRegularExpression(text, scale());
            // Beyond the range of an int the reference has no defined result.
            if (expected.contains("-2147483648"))
                continue;
            if (scaled(text) != expected)
                qWarning() << text;
            QCOMPARE(scaled(text), expected);
            scaledTexts += expected != text;
        }
    }
    QVERIFY(scaledTexts > 500);
}

void DpiInfoTest::survivesHugeNumbers()
{
    // The ten digits end in a suffix that fits an int again: 2147483647 at most, then 7px.
    QVERIFY(scaled("99999999999px").startsWith("2147483647px"));

    // A quadratic scan would take minutes for each of these.
    constexpr int count = 300000;
    const QString unit = "px";
    for (const QString &run :
         {QString(count, QLatin1Char('9')), QString(count, QLatin1Char('0')),
          QString(count, QChar(0x0663)), "1." + QString(count, QLatin1Char('9'))}) {
        QVERIFY(scaled(run + unit).endsWith(unit));
        QCOMPARE(scaled(run), run);
    }
    QCOMPARE(scaled(unit.repeated(count)), unit.repeated(count));
}

QTEST_MAIN(DpiInfoTest)
#include "dpi-info-test.moc"
