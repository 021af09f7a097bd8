#include <kovakit-qt/utils/kova-locale.h>

#include <QtTest>

#include <cstdio>

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
    const QMap<QString, QStringList> languagesByCode = {
        {"enu", {"en"}}, {"jpn", {"ja"}},
        {"deu", {"de"}}, {"krn", {"ko"}},
        {"fra", {"fr"}}, {"ita", {"it"}},
        {"esn", {"es"}}, {"rus", {"ru"}},
        {"dan", {"da"}}, {"nor", {"no", "nb", "nn"}},
        {"sve", {"sv"}}, {"nld", {"nl"}},
        {"plk", {"pl"}}, {"hun", {"hu"}},
        {"trk", {"tr"}}, {"csy", {"cs"}}};
    const KovaLocale *map = KovaLocale::getInstance();
    for (auto row = languagesByCode.begin(); row != languagesByCode.end(); ++row) {
        for (const QString &language : row.value()) {
            for (const char *rest : {"", "_", "_xx", "_xx_euro"})
                QCOMPARE(map->getLanguageByLocale(language + rest), row.key());
        }
    }
    const QMap<QString, QStringList> localesByCode = {
        {"ptg", {"pt", "pt_pt"}},
        {"ptb", {"pt_br", "pt_PT", "pt_"}},
        {"cht", {"zh_tw", "zh_hk", "zh_mo"}},
        {"chs", {"zh", "zh_cn", "zh_sg", "zh_TW"}},
        {"enu", {"fi_fi", "", "EN_us", "DE", "_de", "ptx", "deu", "c"}},
    };
    for (auto row = localesByCode.begin(); row != localesByCode.end(); ++row) {
        for (const QString &locale : row.value())
            QCOMPARE(map->getLanguageByLocale(locale), row.key());
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
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LC_ALL", row.key());
        process.setProcessEnvironment(environment);
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
