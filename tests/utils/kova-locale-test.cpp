#include <kovakit-qt/utils/kova-locale.h>

#include <QtTest>

#include <cstdio>
#include <cstring>

class KovaLocaleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mapsLocaleNames_data();
    void mapsLocaleNames();
    void readsTheSystemLocale_data();
    void readsTheSystemLocale();
    void takesTheHostsEntries();
};

void KovaLocaleTest::mapsLocaleNames_data()
{
    QTest::addColumn<QString>("code");
    const auto rows = [](const char *code, std::initializer_list<const char *> locales) {
        for (const char *locale : locales)
            QTest::newRow(locale) << QString::fromLatin1(code);
    };
    rows("deu", {"de", "de_de", "de_at"});
    rows("nor", {"no", "nb_no", "nn_no"});
    rows("krn", {"ko_kr"});
    rows("esn", {"es_mx"});
    rows("csy", {"cs_cz_euro"});
    rows("ptg", {"pt", "pt_pt"});
    rows("ptb", {"pt_br", "pt_PT", "pt_"});
    rows("cht", {"zh_tw", "zh_hk", "zh_mo"});
    rows("chs", {"zh", "zh_cn", "zh_sg", "zh_TW"});
    rows("enu", {"en_gb", "fi_fi", "", "EN_us", "_de", "ptx", "deu", "c"});
}

void KovaLocaleTest::mapsLocaleNames()
{
    QFETCH(QString, code);
    const QString locale = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(KovaLocale::getInstance()->getLanguageByLocale(locale), code);
}

void KovaLocaleTest::readsTheSystemLocale_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("pt_PT.UTF-8") << "ptg";
    QTest::newRow("pt_BR.UTF-8") << "ptb";
    QTest::newRow("zh_TW.UTF-8") << "cht";
    QTest::newRow("sv_SE@euro") << "sve";
    QTest::newRow("C") << "enu";
}

// Qt reads the locale from the environment once, so each one takes a process.
void KovaLocaleTest::readsTheSystemLocale()
{
    QFETCH(QString, code);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", QString::fromLatin1(QTest::currentDataTag()));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"default-language"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(QString::fromLatin1(process.readAllStandardOutput()), code);
}

void KovaLocaleTest::takesTheHostsEntries()
{
    KovaLocale *locale = KovaLocale::getInstance();
    locale->setLanguageMap("fi", "fin");
    QCOMPARE(locale->getLanguageByLocale("fi_fi"), "fin");
    QCOMPARE(locale->getLanguageByLocale("fi"), "fin");

    locale->setLanguageMap("en", "eng");
    QCOMPARE(locale->getLanguageByLocale("en_us"), "eng");
    QCOMPARE(locale->getLanguageByLocale("eo"), "enu");

    locale->setLanguageMap("pt", "por");
    locale->setLanguageMap("zh", "zho");
    QCOMPARE(locale->getLanguageByLocale("pt"), "ptg");
    QCOMPARE(locale->getLanguageByLocale("zh_cn"), "chs");
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 2 && std::strcmp(argv[1], "default-language") == 0) {
        std::fputs(qPrintable(KovaLocale::getInstance()->getDefaultLanguage()), stdout);
        return 0;
    }
    KovaLocaleTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "kova-locale-test.moc"
