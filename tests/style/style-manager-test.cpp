#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QRandomGenerator>
#include <QRegExp>
#include <QTextStream>
#include <QtTest>

#include <sys/stat.h>

namespace {

QString load(const QByteArray &content, const char *key)
{
    StyleManager::getInstance()->initialize({writeScratchFile(QStringLiteral("one.qss"), content)});
    return getStyleSheet(key, true);
}

// The reader written down as the sequence of text operations that defines the format.
QMap<QString, QString> readByDefinition(QString text)
{
    text += QLatin1Char('\n');
    QRegExp block(QStringLiteral("/\\*.*\\*/"));
    block.setMinimal(true);
    text.remove(block);
    QRegExp line(QStringLiteral("//.*\n"));
    line.setMinimal(true);
    text.remove(line);

    QMap<QString, QString> entries;
    QString key;
    QString body;
    QTextStream stream(&text);
    while (!stream.atEnd()) {
        const QString current = stream.readLine();
        if (current.startsWith(QLatin1String("==")) && current.endsWith(QLatin1String("=="))) {
            if (!key.isEmpty()) {
                entries.insert(key, body);
                body.clear();
            }
            key = QString(current).remove(QRegExp(QStringLiteral("[= ]")));
        } else {
            body += QLatin1Char('\n') + current;
        }
    }
    if (!key.isEmpty())
        entries.insert(key, body);
    return entries;
}

} // namespace

class StyleManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void storesEntriesByKey();
    void scalesOnRequestOnly();
    void removesComments();
    void replacesFolders();
    void laterDefinitionsWin();
    void reportsMissingFilesAndKeys();
    void survivesUnreadableFiles();
    void equalsTheDefinition();
    void isLinear();
};

void StyleManagerTest::initTestCase()
{
    UIPathManager::getInstance()->setPath(QStringLiteral("resource_path"), scratchFolder());
    UIPathManager::getInstance()->setPath(QStringLiteral("user_data_path"), scratchFolder());
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);
}

void StyleManagerTest::storesEntriesByKey()
{
    QCOMPARE(load("== a.b ==\nx\n\ny\n== c ==\n== d\t==\nz", "a.b"), QStringLiteral("\nx\n\ny"));
    QCOMPARE(getStyleSheet("c", true), QString());
    QCOMPARE(getStyleSheet("d\t", true), QStringLiteral("\nz"));

    // Lines without a key of their own go to the next entry; blanks beside a header make it text.
    QCOMPARE(load("early\n=====\nmiddle\n==late==\n ==no==\n==no== \n", "late"),
             QStringLiteral("\nearly\nmiddle\n ==no==\n==no== \n"));
    QCOMPARE(load("==crlf==\r\na", "crlf"), QStringLiteral("\na"));
}

void StyleManagerTest::scalesOnRequestOnly()
{
    const QString text = load("== s ==\nQWidget { width: 10px; }", "s");
    QCOMPARE(text, QStringLiteral("\nQWidget { width: 10px; }"));
    QCOMPARE(getStyleSheet("s", false),
             QStringLiteral("\nQWidget { width: %1px; }").arg(kovaPx(10)));
}

void StyleManagerTest::removesComments()
{
    QCOMPARE(load("== k1 ==\na/* 1\n== x ==\n*/b /* 2 */c\nd // e\nf", "k1"),
             QStringLiteral("\nab c\nd f"));
    QCOMPARE(load("== k2 ==\na /* open\nb", "k2"), QStringLiteral("\na /* open\nb"));
    QCOMPARE(load("== k3 ==\nurl(http://x)\nb", "k3"), QStringLiteral("\nurl(http:b"));
}

void StyleManagerTest::replacesFolders()
{
    const ImageManager *images = ImageManager::getInstance();
    QCOMPARE(load("== f ==\nTMPIMG_LOC IMG_LOC img_loc", "f"),
             QStringLiteral("\n%1 %2 img_loc")
                 .arg(images->getTempImageFolder(), images->getImageFolder()));
}

void StyleManagerTest::laterDefinitionsWin()
{
    StyleManager::getInstance()->initialize(
        {writeScratchFile(QStringLiteral("1.qss"), "== k ==\nold\n== only1 ==\nkept"),
         writeScratchFile(QStringLiteral("2.qss"), "== k ==\nnew")});
    QCOMPARE(getStyleSheet("k", true), QStringLiteral("\nnew"));
    QCOMPARE(load("== other ==\nz", "only1"), QStringLiteral("\nkept"));
}

void StyleManagerTest::reportsMissingFilesAndKeys()
{
    WarningCatcher warnings;
    const QString good = writeScratchFile(QStringLiteral("good.qss"), "== good ==\ng");
    StyleManager::getInstance()->initialize({QStringLiteral("/no/such.qss"), good});
    QCOMPARE(warnings.take(), QStringList{QStringLiteral("file \"/no/such.qss\" not exist")});
    QCOMPARE(getStyleSheet("good", true), QStringLiteral("\ng"));

    QCOMPARE(getStyleSheet(QStringLiteral("no \"key\""), false), QString());
    QCOMPARE(getStyleSheet(nullptr, true), QString());
    QCOMPARE(warnings.take(),
             (QStringList{QStringLiteral("Cannot find stylesheet \"no \\\"key\\\"\""),
                          QStringLiteral("Cannot find stylesheet \"\"")}));
}

void StyleManagerTest::survivesUnreadableFiles()
{
    const QString pipe = scratchFolder() + QLatin1String("/pipe.qss");
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    WarningCatcher warnings;
    const QString last =
        writeScratchFile(QStringLiteral("last.qss"), QByteArray("== l ==\nyes\0no", 15));
    StyleManager::getInstance()->initialize({pipe, scratchFolder(), last});
    QCOMPARE(warnings.take(), QStringList());
    // Each file adds a line feed, whatever could be read of it.
    QCOMPARE(getStyleSheet("l", true), QStringLiteral("\n\n\nyes"));
}

void StyleManagerTest::equalsTheDefinition()
{
    QRandomGenerator random(12);
    const QStringList words{QStringLiteral("=="), QStringLiteral("=="), QStringLiteral("\n"),
                            QStringLiteral("\n"), QStringLiteral("/*"), QStringLiteral("*/"),
                            QStringLiteral("//"), QStringLiteral("="),  QStringLiteral(" "),
                            QStringLiteral("a"),  QStringLiteral("b"),  QStringLiteral("/"),
                            QStringLiteral("*"),  QStringLiteral("\t"), QStringLiteral("ä")};
    int compared = 0;
    for (int i = 0; i < 1000; ++i) {
        // A key of its own keeps the entries of earlier rounds apart.
        QString text = QStringLiteral("==first%1==\n").arg(i);
        for (int w = int(random.bounded(40)); w > 0; --w)
            text += words.at(int(random.bounded(words.size())));
        StyleManager::getInstance()->initialize(
            {writeScratchFile(QStringLiteral("fuzz.qss"), text.toUtf8())});
        const QMap<QString, QString> expected = readByDefinition(text);
        for (auto it = expected.begin(); it != expected.end(); ++it, ++compared) {
            if (getStyleSheet(it.key(), true) != it.value())
                qWarning() << text;
            QCOMPARE(getStyleSheet(it.key(), true), it.value());
        }
    }
    QVERIFY(compared > 1000);
}

void StyleManagerTest::isLinear()
{
    // Each of these takes a reader that searches the rest of the text again far beyond the time
    // that a test may take.
    constexpr int words = 150000;
    for (const char *word : {"/*", "//", "/**/", "== k ==\n", "9", "\n", "\xff"}) {
        const QByteArray content = "==big==\n" + QByteArray(word).repeated(words);
        load(content, "big");
    }
    QCOMPARE(load("== after ==\nok", "after"), QStringLiteral("\nok"));
}

QTEST_MAIN(StyleManagerTest)
#include "style-manager-test.moc"
