// SPDX-License-Identifier: MIT

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

QString load(const QByteArray &content, const char *key)
{
    StyleManager::getInstance()->initialize({writeScratchFile("one.qss", content)});
    return getStyleSheet(key, true);
}

} // namespace

// Style files: how they are cut into entries, what is replaced in their texts, and bad files.
class StyleManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void storesEntriesByKey();
    void removesComments();
    void scalesAndReplacesFolders();
    void laterDefinitionsWin();
    void reportsMissingFilesAndKeys();
    void survivesUnreadableFiles();
    void isLinear();
};

void StyleManagerTest::initTestCase()
{
    UIPathManager::getInstance()->setPath("resource_path", scratchFolder());
    UIPathManager::getInstance()->setPath("user_data_path", scratchFolder() + "/16px/");
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);
}

void StyleManagerTest::storesEntriesByKey()
{
    QCOMPARE(load("== a.b ==\nx\n\ny\n== c ==\n== d\t==\nz", "a.b"), "\nx\n\ny");
    QCOMPARE(getStyleSheet("c", true), "");
    QCOMPARE(getStyleSheet("d\t", true), "\nz");

    // Lines without a key of their own go to the next entry; blanks beside a header make it text.
    QCOMPARE(load("early\n=====\nmiddle\n==late==\n ==no==\n==no== \n", "late"),
             "\nearly\nmiddle\n ==no==\n==no== \n");
    QCOMPARE(load("==crlf==\r\na", "crlf"), "\na");
}

void StyleManagerTest::removesComments()
{
    QCOMPARE(load("== k1 ==\na/* 1\n== x ==\n*/b /* 2 */c\nd // e\nf", "k1"), "\nab c\nd f");
    QCOMPARE(load("== k2 ==\na /* open\nb", "k2"), "\na /* open\nb");
    // Blocks go first, even one that begins behind two strokes; their marks share no star.
    QCOMPARE(load("== k4 ==\na /*/ b */ c // d /* e\nf */ g", "k4"), "\na  c ");
    QCOMPARE(load("== k5 ==\na /* b // c\nd */ e /* f", "k5"), "\na  e /* f");
    QCOMPARE(load("== k3 ==\nurl(http://x)\nb", "k3"), "\nurl(http:b");
}

void StyleManagerTest::scalesAndReplacesFolders()
{
    // Neither the slashes at the end of the user's folder nor its name change the text around it.
    QCOMPARE(ImageManager::getInstance()->getTempImageFolder(),
             scratchFolder() + "/16px//tmp_images");
    QCOMPARE(load("== s ==\nwidth: 10px TMPIMG_LOC IMG_LOC img_loc", "s"),
             "\nwidth: 10px " + scratchFolder() + "/16\\000070x/tmp_images " + scratchFolder()
                 + "/images img_loc");
    QVERIFY(getStyleSheet("s", false).startsWith(QString("\nwidth: %1px ").arg(kovaPx(10))));
}

void StyleManagerTest::laterDefinitionsWin()
{
    StyleManager::getInstance()->initialize(
        {writeScratchFile("1.qss", "== k ==\nold\n== only1 ==\nkept"),
         writeScratchFile("2.qss", "== k ==\nnew")});
    QCOMPARE(getStyleSheet("k", true), "\nnew");
    QCOMPARE(load("== other ==\nz", "only1"), "\nkept");
}

void StyleManagerTest::reportsMissingFilesAndKeys()
{
    WarningCatcher warnings;
    StyleManager::getInstance()->initialize(
        {"/no/such.qss", writeScratchFile("good.qss", "== good ==\ng")});
    QCOMPARE(warnings.take(), QStringList("file \"/no/such.qss\" not exist"));
    QCOMPARE(getStyleSheet("good", true), "\ng");

    QCOMPARE(getStyleSheet("no \"key\"", false), "");
    QCOMPARE(getStyleSheet(nullptr, true), "");
    QCOMPARE(warnings.take(), (QStringList{"Cannot find stylesheet \"no \\\"key\\\"\"",
                                           "Cannot find stylesheet \"\""}));
}

void StyleManagerTest::survivesUnreadableFiles()
{
    const QString pipe = scratchFolder() + "/pipe.qss";
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    WarningCatcher warnings;
    const QString last = writeScratchFile("last.qss", QByteArray("== l ==\nyes\0no", 15));
    const QString nul = writeScratchFile("nul.qss", QByteArray("\0no", 3));
    StyleManager::getInstance()->initialize({pipe, scratchFolder(), nul, last});
    QCOMPARE(warnings.take(), QStringList());
    // Each file adds a line feed, whatever could be read of it.
    QCOMPARE(getStyleSheet("l", true), "\n\n\n\nyes");
}

void StyleManagerTest::isLinear()
{
    // Each of these takes a reader that searches the rest of the text again far beyond the time
    // that a test may take.
    for (const char *word : {"/*", "//", "/**/", "== k ==\n", "9", "\n", "\xff"})
        load("==big==\n" + QByteArray(word).repeated(150000), "big");
    QCOMPARE(load("== after ==\nok", "after"), "\nok");
}

QTEST_MAIN(StyleManagerTest)
#include "style-manager-test.moc"
