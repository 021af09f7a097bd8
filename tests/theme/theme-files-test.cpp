#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QtTest>
#include <QtWidgets>

namespace {

QStringList namesIn(const char *list)
{
    QFile file(themeFolder() + "/images.json");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList names;
    const QJsonArray items =
        QJsonDocument::fromJson(file.readAll()).object().value(QLatin1String(list)).toArray();
    for (const QJsonValue &item : items)
        names.append(item.toString());
    return names;
}

QImage picture(const QString &name)
{
    return QImage(ImageManager::getInstance()->getImageFullPath(name));
}

QMap<QString, QString> stringsOf(const QString &code)
{
    QFile file(QString("%1/strings/%2.json").arg(themeFolder(), code));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject table = QJsonDocument::fromJson(file.readAll()).object();
    QMap<QString, QString> strings;
    for (auto it = table.begin(); it != table.end(); ++it)
        strings.insert(it.key(), it.value().toString());
    return strings;
}

// The keys that the widgets ask for.
const QStringList dayKeys{"sunday",   "monday", "tuesday", "wednesday",
                          "thursday", "friday", "saturday"};
const QStringList monthKeys{"month_jan", "month_feb", "month_mar", "month_apr",
                            "month_may", "month_jun", "month_jul", "month_aug",
                            "month_sep", "month_oct", "month_nov", "month_dec"};
const QStringList otherKeys{"ok",
                            "cancel",
                            "wizard_client_upgrade",
                            "first_page",
                            "prev_5_pages",
                            "last_page",
                            "next_5_pages",
                            "pagebar_refresh",
                            "accessible_page",
                            "accessible_current_page",
                            "today",
                            "accessible_calendar",
                            "accessible_calendar_prev_month",
                            "accessible_calendar_next_month"};

} // namespace

class ThemeFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void hasThePicturesOfTheWidgets();
    void everyPictureHasFourStates();
    void temporaryPicturesHaveSources();
    void shadowFrameFadesOutwardsWithoutSeams();
    void movieRuns();
    void stringsAreComplete_data();
    void stringsAreComplete();
};

void ThemeFilesTest::hasThePicturesOfTheWidgets()
{
    const QStringList names = namesIn("images");
    for (const char *name : {"app_img",
                             "bg_tutorial_b",
                             "bg_tutorial_l",
                             "bg_tutorial_lb",
                             "bg_tutorial_lt",
                             "bg_tutorial_r",
                             "bg_tutorial_rb",
                             "bg_tutorial_rt",
                             "bg_tutorial_t",
                             "bt_next",
                             "bt_pagebar_back",
                             "bt_pagebar_backend",
                             "bt_pagebar_next",
                             "bt_pagebar_nextend",
                             "bt_pagebar_refresh",
                             "bt_search_dropdown",
                             "folder",
                             "icon_information",
                             "icon_question",
                             "icon_warning"})
        QVERIFY2(names.contains(QLatin1String(name)), name);
}

void ThemeFilesTest::everyPictureHasFourStates()
{
    WarningCatcher warnings;
    for (const QString &name : namesIn("images")) {
        const QImage source = picture(name);
        QVERIFY2(source.width() % 4 == 0 && source.height() % 4 == 0, qPrintable(name));
        for (const auto type : {ImageManager::Default, ImageManager::Hover, ImageManager::Click,
                                ImageManager::Disable}) {
            const QPixmap shown = getGlobalImage(name, type);
            QCOMPARE(shown.size(), source.size() / 4);
        }
        const bool stateless = name.startsWith("bg_");
        QCOMPARE(source == picture(name + "_hover"), stateless);
        QCOMPARE(source == picture(name + "_disable"), stateless);
    }
    QCOMPARE(warnings.take(), QStringList());
}

void ThemeFilesTest::temporaryPicturesHaveSources()
{
    for (const QString &name : namesIn("tmp_images")) {
        QVERIFY2(!picture(name).isNull(), qPrintable(name));
        QVERIFY(!QImage(ImageManager::getInstance()->getTempImageFullPath(name)).isNull());
    }
}

void ThemeFilesTest::shadowFrameFadesOutwardsWithoutSeams()
{
    const auto part = [](const char *name) {
        return picture("bg_tutorial_" + QLatin1String(name));
    };
    // Each part is turned so that the sheet's body lies below it, or below and to the right.
    const auto turned = [&part](const char *name, int degrees) {
        return part(name).transformed(QTransform().rotate(degrees));
    };
    struct Corner
    {
        QImage corner;
        QImage above;
        QImage leftOf;
    };
    const Corner corners[] = {
        {turned("lt", 0), turned("t", 0), turned("l", 0)},
        {turned("rt", -90), turned("r", -90), turned("t", -90)},
        {turned("rb", 180), turned("b", 180), turned("r", 180)},
        {turned("lb", 90), turned("l", 90), turned("b", 90)},
    };
    for (const Corner &c : corners) {
        const int last = c.corner.width() - 1;
        QCOMPARE(c.corner.height(), last + 1);
        QCOMPARE(c.above.height(), last + 1);
        QCOMPARE(c.leftOf.width(), last + 1);
        QVERIFY(qAlpha(c.above.pixel(0, 0)) <= 1);
        QVERIFY(qAlpha(c.above.pixel(0, last)) > 20);
        for (int i = 0; i <= last; ++i) {
            QVERIFY(qAlpha(c.corner.pixel(0, i)) <= qAlpha(c.leftOf.pixel(0, 0)) + 1);
            QVERIFY(std::abs(qAlpha(c.corner.pixel(last, i)) - qAlpha(c.above.pixel(0, i))) <= 2);
            QVERIFY(std::abs(qAlpha(c.corner.pixel(i, last)) - qAlpha(c.leftOf.pixel(i, 0))) <= 2);
            if (i > 0)
                QVERIFY(qAlpha(c.above.pixel(0, i)) >= qAlpha(c.above.pixel(0, i - 1)));
        }
        // An edge is stretched along its length: it must be the same all along.
        for (int x = 1; x < c.above.width(); ++x)
            QCOMPARE(c.above.pixel(x, last / 2), c.above.pixel(0, last / 2));
    }
}

void ThemeFilesTest::movieRuns()
{
    QMovie movie(ImageManager::getInstance()->getImageFolder() + "/processing.gif");
    const int side = kovaPxRounded(32);
    movie.setScaledSize(QSize(side, side));
    QVERIFY(movie.isValid());
    QVERIFY(movie.frameCount() > 10);
    QCOMPARE(movie.loopCount(), -1);
    QImage before;
    for (int frame = 0; frame < movie.frameCount(); ++frame) {
        QVERIFY(movie.jumpToFrame(frame));
        const QImage image = movie.currentImage();
        QCOMPARE(image.size(), QSize(side, side));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(image.pixel(side / 2, side / 8)), 255);
        QVERIFY(image != before);
        before = image;
    }
    QVERIFY(movie.nextFrameDelay() > 0);
}

void ThemeFilesTest::stringsAreComplete_data()
{
    QTest::addColumn<QString>("locale");
    const auto row = [](const char *code, const char *locale) {
        QTest::newRow(code) << QString::fromLatin1(locale);
    };
    row("enu", "en_US");
    row("jpn", "ja_JP");
    row("deu", "de_DE");
    row("krn", "ko_KR");
    row("fra", "fr_FR");
    row("ita", "it_IT");
    row("esn", "es_ES");
    row("rus", "ru_RU");
    row("dan", "da_DK");
    row("nor", "nb_NO");
    row("sve", "sv_SE");
    row("nld", "nl_NL");
    row("plk", "pl_PL");
    row("hun", "hu_HU");
    row("trk", "tr_TR");
    row("csy", "cs_CZ");
    row("ptg", "pt_PT");
    row("ptb", "pt_BR");
    row("cht", "zh_TW");
    row("chs", "zh_CN");
}

void ThemeFilesTest::stringsAreComplete()
{
    QFETCH(QString, locale);
    const QMap<QString, QString> strings = stringsOf(QLatin1String(QTest::currentDataTag()));
    QStringList expectedKeys = dayKeys + monthKeys + otherKeys;
    expectedKeys.sort();
    QCOMPARE(QStringList(strings.keys()), expectedKeys);
    for (const QString &text : strings)
        QVERIFY(!text.isEmpty() && text == text.trimmed());
    QVERIFY(strings.value("accessible_page").contains("%1"));
    const QString currentPage = strings.value("accessible_current_page");
    QVERIFY(currentPage.contains("%1") && currentPage.contains("%2"));

    const QLocale data(locale);
    for (int day = 0; day < dayKeys.size(); ++day)
        QCOMPARE(strings.value(dayKeys.at(day)),
                 data.standaloneDayName(day == 0 ? Qt::Sunday : day, QLocale::NarrowFormat));
    for (int month = 0; month < monthKeys.size(); ++month)
        QCOMPARE(strings.value(monthKeys.at(month)),
                 data.standaloneMonthName(month + 1, QLocale::LongFormat));
}

QTEST_MAIN(ThemeFilesTest)
#include "theme-files-test.moc"
