// SPDX-License-Identifier: MIT

#include "support/test-host.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QtTest>
#include <QtWidgets>

namespace {

QStringList pictureNames()
{
    QStringList names;
    for (const QVariant &name :
         readThemeFile("images.json").value("images").toArray().toVariantList())
        names.append(name.toString());
    return names;
}

QImage picture(const QString &name)
{
    return QImage(ImageManager::getInstance()->getImageFullPath(name));
}

} // namespace

// What the built theme consists of: pictures, the shadow's parts, the movie, strings in all
// languages.
class ThemeFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void everyPictureHasFourStates();
    void shadowFrameFadesOutwardsWithoutSeams();
    void movieRuns();
    void stringsAreComplete_data();
    void stringsAreComplete();
    void refusesPalettesThatAreWrong();
};

void ThemeFilesTest::everyPictureHasFourStates()
{
    for (const QString &name : pictureNames()) {
        const QImage source = picture(name);
        QVERIFY2(source.width() % 4 == 0 && source.height() % 4 == 0, qPrintable(name));
        for (int type = ImageManager::Default; type <= ImageManager::Disable; ++type)
            QCOMPARE(getGlobalImage(name, ImageManager::ImageType(type)).size(), source.size() / 4);
        for (const char *state : {"_hover", "_disable"})
            QVERIFY2((source == picture(name + state)) == name.startsWith("bg_"), qPrintable(name));
    }
}

void ThemeFilesTest::shadowFrameFadesOutwardsWithoutSeams()
{
    // Each corner is turned so that the sheet's body lies below it and to the right.
    const struct
    {
        const char *names[3]; // of the corner, and the edges above it and to its left
        int degrees;
    } corners[] = {{{"lt", "t", "l"}, 0},
                   {{"rt", "r", "t"}, -90},
                   {{"rb", "b", "r"}, 180},
                   {{"lb", "l", "b"}, 90}};
    for (const auto &[names, degrees] : corners) {
        QImage turned[3];
        for (int i = 0; i < 3; ++i)
            turned[i] = picture(QString("bg_tutorial_") + names[i])
                            .transformed(QTransform().rotate(degrees));
        const auto &[corner, above, leftOf] = turned;
        const int last = corner.width() - 1;
        for (const int side : {corner.height(), above.height(), leftOf.width()})
            QCOMPARE(side, last + 1);
        QVERIFY(qAlpha(above.pixel(0, 0)) <= 1);
        QVERIFY(qAlpha(above.pixel(0, last)) > 20);
        for (int i = 0; i <= last; ++i) {
            QVERIFY(qAlpha(corner.pixel(0, i)) <= qAlpha(leftOf.pixel(0, 0)) + 1);
            QVERIFY(std::abs(qAlpha(corner.pixel(last, i)) - qAlpha(above.pixel(0, i))) <= 2);
            QVERIFY(std::abs(qAlpha(corner.pixel(i, last)) - qAlpha(leftOf.pixel(i, 0))) <= 2);
            QVERIFY(i == 0 || qAlpha(above.pixel(0, i)) >= qAlpha(above.pixel(0, i - 1)));
        }
        // An edge is stretched along its length: it must be the same all along.
        for (int x = 1; x < above.width(); ++x)
            QCOMPARE(above.pixel(x, last / 2), above.pixel(0, last / 2));
    }
}

void ThemeFilesTest::movieRuns()
{
    QMovie movie(ImageManager::getInstance()->getImageFolder() + "/processing.gif");
    QVERIFY(movie.frameCount() > 10);
    QCOMPARE(movie.loopCount(), -1);
    QImage before;
    for (int frame = 0; frame < movie.frameCount(); ++frame) {
        QVERIFY(movie.jumpToFrame(frame));
        const QImage image = movie.currentImage();
        QVERIFY(image != before);
        before = image;
    }
    QVERIFY(movie.nextFrameDelay() > 0);
    const int pixels = movie.frameCount() * before.width() * before.height();
    QVERIFY2(QFileInfo(movie.fileName()).size() < pixels / 10, "is hardly compressed");
}

void ThemeFilesTest::stringsAreComplete_data()
{
    QTest::addColumn<QString>("locale");
    for (const auto &[code, locale] : std::initializer_list<std::pair<const char *, const char *>>{
             {"enu", "en_US"}, {"jpn", "ja_JP"}, {"deu", "de_DE"}, {"krn", "ko_KR"},
             {"fra", "fr_FR"}, {"ita", "it_IT"}, {"esn", "es_ES"}, {"rus", "ru_RU"},
             {"dan", "da_DK"}, {"nor", "nb_NO"}, {"sve", "sv_SE"}, {"nld", "nl_NL"},
             {"plk", "pl_PL"}, {"hun", "hu_HU"}, {"trk", "tr_TR"}, {"csy", "cs_CZ"},
             {"ptg", "pt_PT"}, {"ptb", "pt_BR"}, {"cht", "zh_TW"}, {"chs", "zh_CN"}})
        QTest::newRow(code) << QString(locale);
}

void ThemeFilesTest::stringsAreComplete()
{
    QFETCH(QString, locale);
    const QStringList keys = readThemeFile("strings/enu.json").keys();
    QVERIFY(!keys.isEmpty());
    const QJsonObject strings =
        readThemeFile(QString("strings/%1.json").arg(QTest::currentDataTag()));
    const auto textOf = [&](const QString &key) { return strings.value(key).toString(); };
    QCOMPARE(strings.keys(), keys);
    for (const QString &key : keys)
        QVERIFY2(!textOf(key).isEmpty() && textOf(key) == textOf(key).trimmed(), qPrintable(key));
    for (const char *place : {"%1", "%2"})
        QVERIFY(textOf("accessible_current_page").contains(place));
    QVERIFY(textOf("accessible_page").contains("%1"));

    const QLocale data(locale);
    const QLocale english(QLocale::English);
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day)
        QCOMPARE(textOf(english.dayName(day).toLower()),
                 data.standaloneDayName(day, QLocale::NarrowFormat));
    for (int month = 1; month <= 12; ++month)
        QCOMPARE(textOf("month_" + english.monthName(month, QLocale::ShortFormat).toLower()),
                 data.standaloneMonthName(month));
}

void ThemeFilesTest::refusesPalettesThatAreWrong()
{
    const QPair<const char *, const char *> cases[] = {
        {R"({"colors": {"red": "#C22F2D"}, "pictures": {"alert": ["red", "red"]}})", "alert"},
        {R"({"colors": {"red": "no color"}, "pictures": {}})", "red"},
        {R"({"colors": {}, "pictures": {"plain": ["a", "b", "c", "d"]}})", "plain"},
        {"{", "palette.json"},
    };
    for (const auto &[palette, named] : cases) {
        QProcess tool;
        tool.start(KOVAKIT_THEME_TOOL,
                   {"styles", writeScratchFile("palette.json", palette), scratchFolder() + "/out"});
        QVERIFY2(tool.waitForFinished() && tool.exitCode() == 1, palette);
        QVERIFY2(tool.readAllStandardError().contains(named), palette);
    }
}

QTEST_MAIN(ThemeFilesTest)
#include "theme-files-test.moc"
