#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include "support/warning-catcher.h"

#include <QtTest>

class ComponentStringsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingStringShowsItsKey();
    void installReplacesTheTable();
    void pathsAreReplacedWithAWarning();
};

void ComponentStringsTest::missingStringShowsItsKey()
{
    WarningCatcher warnings;
    QCOMPARE(ComponentStrings::getInstance()->getString("o\"k"), "o\"k");
    QCOMPARE(warnings.take(), QStringList{"Cannot find key in ComponentStrings \"o\\\"k\""});
}

void ComponentStringsTest::installReplacesTheTable()
{
    WarningCatcher warnings;
    ComponentStrings *strings = ComponentStrings::getInstance();
    strings->installStrings({{"ok", "Gut"}, {"cancel", QString()}});
    QCOMPARE(strings->getString("ok"), "Gut");
    QCOMPARE(strings->getString("cancel"), QString());
    QVERIFY(strings->hasString("cancel"));
    QVERIFY(!strings->hasString("today"));
    QCOMPARE(warnings.take(), QStringList());

    strings->installStrings({{"cancel", "Zurück"}});
    QCOMPARE(strings->getString("ok"), "ok");
    QCOMPARE(strings->getString("Cancel"), "Cancel");
    QCOMPARE(warnings.take().size(), 2);
}

void ComponentStringsTest::pathsAreReplacedWithAWarning()
{
    WarningCatcher warnings;
    UIPathManager *paths = UIPathManager::getInstance();
    QCOMPARE(paths->getPath("resource_path"), QString());
    QCOMPARE(warnings.take(), QStringList{"Cannot find path by key \"resource_path\""});

    paths->setPath("resource_path", "/first");
    QCOMPARE(warnings.take(), QStringList());
    paths->setPath("resource_path", "/second");
    QCOMPARE(warnings.take(), QStringList{"Existing path is \"/second\" with key \"resource_path\" "
                                          "but overwrite it now"});
    QCOMPARE(paths->getPath("resource_path"), "/second");
}

QTEST_GUILESS_MAIN(ComponentStringsTest)
#include "component-strings-test.moc"
