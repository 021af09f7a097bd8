// SPDX-License-Identifier: MIT

#include <kovakit-qt/utils/kova-locale.h>

#include <QtTest>

#include <cstdio>

// The language code for a locale: by its name, from the system, and with entries of the host.
class KovaLocaleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mapsLocaleNames();
    void readsTheSystemLocale();
    void takesTheHostsEntries();
};

void KovaLocaleTest::mapsLocaleNames()
{
    const QString languages =
        "en:enu en_:enu fi_fi:enu EN_us:enu DE:enu _de:enu ptx:enu deu:enu c:enu :enu ja:jpn "
        "ja_:jpn ja_xx:jpn ja_xx_euro:jpn de:deu ko:krn fr:fra it:ita es:esn ru:rus da:dan no:nor "
        "nb:nor nn_xx:nor sv:sve nl:nld pl:plk hu:hun tr:trk cs:csy pt:ptg pt_pt:ptg pt_br:ptb "
        "pt_PT:ptb pt_:ptb zh_tw:cht zh_hk:cht zh_mo:cht zh:chs zh_cn:chs zh_sg:chs zh_TW:chs";
    const KovaLocale *map = KovaLocale::getInstance();
    for (const QString &pair : languages.split(' ')) {
        const QString locale = pair.section(':', 0, 0);
        QVERIFY2(map->getLanguageByLocale(locale) == pair.section(':', 1), qPrintable(pair));
    }
    QCOMPARE(map->getPortugueseLanguage("de"), "ptb");
    QCOMPARE(map->getChineseLanguage("de"), "chs");
}

// Qt reads the locale from the environment once, so each one takes a process.
void KovaLocaleTest::readsTheSystemLocale()
{
    const QMap<QString, QByteArray> codes = {{"pt_PT.UTF-8", "ptg"},
                                             {"pt_BR.UTF-8", "ptb"},
                                             {"zh_TW.UTF-8", "cht"},
                                             {"sv_SE@euro", "sve"},
                                             {"C", "enu"}};
    for (auto row = codes.begin(); row != codes.end(); ++row) {
        qputenv("LC_ALL", row.key().toUtf8()); // for the child alone: Qt has read it here
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {"default-language"});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardOutput(), row.value());
    }
}

void KovaLocaleTest::takesTheHostsEntries()
{
    KovaLocale *locale = KovaLocale::getInstance();
    locale->setLanguageMap("fi", "fin");
    locale->setLanguageMap("en", "eng");
    QCOMPARE(locale->getLanguageByLocale("fi_fi"), "fin");
    QCOMPARE(locale->getLanguageByLocale("fi"), "fin");
    QCOMPARE(locale->getLanguageByLocale("en_us"), "eng");
    QCOMPARE(locale->getLanguageByLocale("eo"), "enu");

    // These two have rules of their own.
    locale->setLanguageMap("pt", "por");
    locale->setLanguageMap("zh", "zho");
    QCOMPARE(locale->getLanguageByLocale("pt"), "ptg");
    QCOMPARE(locale->getLanguageByLocale("zh_cn"), "chs");
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "default-language") == 0) {
        std::fputs(qPrintable(KovaLocale::getInstance()->getDefaultLanguage()), stdout);
        return 0;
    }
    KovaLocaleTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "kova-locale-test.moc"
