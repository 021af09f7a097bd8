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
    QCOMPARE(ComponentStrings::getInstance()->getString(QStringLiteral("o\"k")),
             QStringLiteral("o\"k"));
    QCOMPARE(warnings.take(),
             QStringList{QStringLiteral("Cannot find key in ComponentStrings \"o\\\"k\"")});
}

void ComponentStringsTest::installReplacesTheTable()
{
    WarningCatcher warnings;
    ComponentStrings *strings = ComponentStrings::getInstance();
    strings->installStrings(
        {{QStringLiteral("ok"), QStringLiteral("Gut")}, {QStringLiteral("cancel"), QString()}});
    QCOMPARE(strings->getString(QStringLiteral("ok")), QStringLiteral("Gut"));
    QCOMPARE(strings->getString(QStringLiteral("cancel")), QString());
    QVERIFY(strings->hasString(QStringLiteral("cancel")));
    QVERIFY(!strings->hasString(QStringLiteral("today")));
    QCOMPARE(warnings.take(), QStringList());

    strings->installStrings({{QStringLiteral("cancel"), QStringLiteral("Zurück")}});
    QCOMPARE(strings->getString(QStringLiteral("ok")), QStringLiteral("ok"));
    QCOMPARE(strings->getString(QStringLiteral("Cancel")), QStringLiteral("Cancel"));
    QCOMPARE(warnings.take().size(), 2);
}

void ComponentStringsTest::pathsAreReplacedWithAWarning()
{
    WarningCatcher warnings;
    UIPathManager *paths = UIPathManager::getInstance();
    QCOMPARE(paths->getPath(QStringLiteral("resource_path")), QString());
    QCOMPARE(warnings.take(),
             QStringList{QStringLiteral("Cannot find path by key \"resource_path\"")});

    paths->setPath(QStringLiteral("resource_path"), QStringLiteral("/first"));
    QCOMPARE(warnings.take(), QStringList());
    paths->setPath(QStringLiteral("resource_path"), QStringLiteral("/second"));
    QCOMPARE(warnings.take(),
             QStringList{QStringLiteral("Existing path is \"/second\" with key \"resource_path\" "
                                        "but overwrite it now")});
    QCOMPARE(paths->getPath(QStringLiteral("resource_path")), QStringLiteral("/second"));
}

QTEST_GUILESS_MAIN(ComponentStringsTest)
#include "component-strings-test.moc"
