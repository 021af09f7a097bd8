// SPDX-License-Identifier: MIT

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

double scale()
{
    return DPIinfo::getInstance()->getDPI();
}

QString scaled(const QString &text)
{
    return DPIinfo::getInstance()->getScaledStyleSheet(text);
}

} // namespace

// The display's scale, and the lengths in style texts that it is applied to.
class DpiInfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void measuresTheDesktop();
    void cutsLengthsToWholePixels();
    void equalsTheRegularExpression();
    void survivesHugeNumbers();
};

void DpiInfoTest::measuresTheDesktop()
{
    QCOMPARE(scale(), qEnvironmentVariableIntValue("QT_FONT_DPI") / 96.0);
    const double factor = qMax(1.0, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
    QCOMPARE(DPIinfo::getInstance()->getDPR(), std::floor(factor));
    QCOMPARE(kovaPx(22), int(std::floor(22 * scale())));
    QCOMPARE(kovaPx(-22), -kovaPx(22));
    QCOMPARE(kovaPxRounded(31), qRound(31 * scale()));
}

void DpiInfoTest::cutsLengthsToWholePixels()
{
    const QMap<double, QString> expected = {{1, "width: 10px; a 0px 1px icon_16px.png"},
                                            {1.25, "width: 12px; a 0px 1px icon_20px.png"},
                                            {1.5, "width: 15px; a 0px 2px icon_24px.png"},
                                            {2, "width: 20px; a 1px 3px icon_32px.png"}};
    QCOMPARE(scaled("width: 10px; a 0.5px 1.5px icon_16px.png"), expected.value(scale()));
    QCOMPARE(scaled("8PX 9pt 7 px px"), "8PX 9pt 7 px px");
}

void DpiInfoTest::equalsTheRegularExpression()
{
    QRandomGenerator random(20);
    const QString alphabets[] = {
        "0123456789.px ", "0.px", "019.pxpxP\n-e+:;",
        // Digits of another script match too, but no number can be read from them.
        QString("12.px") + QChar(0x0663) + QChar(0x0966) + QChar(0x00b2)};
    int scaledTexts = 0;
    for (int i = 0; i < 20000; ++i) {
        const QString &alphabet = alphabets[i % 4];
        QString text;
        for (int length = int(random.bounded(24)); length > 0; --length)
            text += alphabet.at(int(random.bounded(alphabet.size())));
        const QString expected = scaledByRegularExpression(text, scale());
        // Beyond the range of an int the reference has no defined result.
        if (expected.contains("-2147483648"))
            continue;
        QVERIFY2(scaled(text) == expected, qPrintable(text));
        scaledTexts += expected != text;
    }
    QVERIFY(scaledTexts > 500);
}

void DpiInfoTest::survivesHugeNumbers()
{
    // The ten digits end in a suffix that fits an int again: 2147483647 at most, then 7px.
    QVERIFY(scaled("99999999999px").startsWith("2147483647px"));

    // A quadratic scan would take minutes for each of these.
    constexpr int count = 300000;
    for (const QString &run : {QString(count, '9'), QString(count, '0'),
                               QString(count, QChar(0x0663)), "1." + QString(count, '9')}) {
        QVERIFY(scaled(run + "px").endsWith("px"));
        QCOMPARE(scaled(run), run);
    }
    const QString units = QString("px").repeated(count);
    QCOMPARE(scaled(units), units);
}

QTEST_MAIN(DpiInfoTest)
#include "dpi-info-test.moc"
