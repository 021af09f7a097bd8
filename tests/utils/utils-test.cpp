// SPDX-License-Identifier: MIT

#include <kovakit-qt/utils/accessible-util.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/utils/escape-tooltip.h>
#include <kovakit-qt/utils/file-type-map.h>
#include <kovakit-qt/utils/ui-path-manager.h>
#include <kovakit-qt/utils/util.h>

#include "support/warning-catcher.h"

#include <QtTest>
#include <QtWidgets>

using Widgets = QList<QWidget *>;

// The small services: strings, paths, tooltips, file types, and the lists of what takes the focus.
class UtilsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void installReplacesTheStrings();
    void pathsAreReplacedWithAWarning();
    void tooltipShowsTheTextAsItIs();
    void fileTypesHaveIcons();
    void focusListHoldsWhatCanBeReached();
    void focusLevelsAreComparedAsNumbers();
};

namespace {

struct Form : QWidget
{
    Form()
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(edit);
        layout->addWidget(box);
        show();
    }

    QWidget *edit = new QLineEdit;
    QDialogButtonBox *box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QWidget *ok = box->button(QDialogButtonBox::Ok);
    QWidget *cancel = box->button(QDialogButtonBox::Cancel);
};

} // namespace

void UtilsTest::installReplacesTheStrings()
{
    WarningCatcher warnings;
    ComponentStrings *strings = ComponentStrings::getInstance();
    QCOMPARE(strings->getString("o\"k"), "o\"k");
    QCOMPARE(warnings.take(), QStringList("Cannot find key in ComponentStrings \"o\\\"k\""));
    strings->installStrings({{"ok", "Gut"}, {"cancel", ""}});
    QCOMPARE(strings->getString("ok"), "Gut");
    QCOMPARE(strings->getString("cancel"), "");
    QVERIFY(strings->hasString("cancel") && !strings->hasString("today"));
    QCOMPARE(warnings.take(), QStringList());
    strings->installStrings({{"cancel", "Zurück"}});
    QCOMPARE(strings->getString("ok"), "ok");
    QCOMPARE(strings->getString("Cancel"), "Cancel");
    QCOMPARE(warnings.take().size(), 2);
}

void UtilsTest::pathsAreReplacedWithAWarning()
{
    WarningCatcher warnings;
    UIPathManager *paths = UIPathManager::getInstance();
    QCOMPARE(paths->getPath("resource_path"), "");
    QCOMPARE(warnings.take(), QStringList("Cannot find path by key \"resource_path\""));
    paths->setPath("resource_path", "/first");
    QCOMPARE(warnings.take(), QStringList());
    paths->setPath("resource_path", "/second");
    QCOMPARE(warnings.take(), QStringList("Existing path is \"/second\" with key \"resource_path\" "
                                          "but overwrite it now"));
    QCOMPARE(paths->getPath("resource_path"), "/second");
}

void UtilsTest::tooltipShowsTheTextAsItIs()
{
    const QString open = "<p style='white-space:pre'>";
    QCOMPARE(getHtmlEscapedStringForToolTip(""), open + "</p>");
    QCOMPARE(getHtmlEscapedStringForToolTip("a<b\r\n\"c"), open + "a&lt;b\r<br>&quot;c</p>");
    for (const char *text :
         {"<b>R&D</b> </p> &amp; 'x' \"y\"", "a    b\n\n    indented  ", "שלום 日本 😀"}) {
        QTextDocument document;
        document.setHtml(getHtmlEscapedStringForToolTip(text));
        QCOMPARE(document.toPlainText(), text);
    }
}

void UtilsTest::fileTypesHaveIcons()
{
    FileTypeMap *map = FileTypeMap::getInstance();
    const auto icons = [map](const QString &extensions) {
        QStringList names;
        for (const QString &extension : extensions.split('|')) {
            const QString name = map->getFiletypeMapping(extension, false);
            names.append(name);
            if (map->getFiletypeMapping(extension.toUpper(), true)
                != QString(name).replace(".png", "_removed.png"))
                names.append(extension + " that was removed");
        }
        return names.join(' ');
    };
    QFile table(QFINDTESTDATA("file-types.txt"));
    QVERIFY(table.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList rows = QString(table.readAll()).trimmed().split('\n');
    QCOMPARE(rows.size(), 21);
    for (const QString &row : rows) {
        // An audio format that plays with videos as well: the later row counts.
        const QString type = row.section(':', 0, 0);
        for (const QString &extension : row.section(": ", 1).split(' '))
            QCOMPARE(icons(extension), (extension == "ac3" ? "video" : type) + ".png");
    }
    QCOMPARE(icons("|foo|.txt|a.txt|mp3 aac|h"), "xxx.png xxx.png xxx.png xxx.png xxx.png xxx.png");
    map->mappingFile("note", "memo mp3  jot");
    QCOMPARE(icons("memo|mp3||jot"), "note.png note.png note.png note.png");
    QCOMPARE(FileTypeMap().getFiletypeMapping("mp3", false), "audio.png");
}

void UtilsTest::focusListHoldsWhatCanBeReached()
{
    QCOMPARE(accessibleList(nullptr, AccessibleFilter()), Widgets());
    Form form;
    QCOMPARE(accessibleList(&form, Widgets()), (Widgets{form.edit, form.ok, form.cancel}));
    // Parents come before their children.
    form.box->setFocusPolicy(Qt::ClickFocus);
    QCOMPARE(accessibleList(&form, Widgets()),
             (Widgets{form.edit, form.box, form.ok, form.cancel}));
    QCOMPARE(accessibleList(&form, AccessibleFilter()),
             (Widgets{&form, form.edit, form.box, form.ok, form.cancel}));
    QCOMPARE(accessibleList(&form, {form.box, form.edit}), (Widgets{form.ok, form.cancel}));
    QCOMPARE(accessibleList(&form, AccessibleFilter({&form, form.box}, Qt::NoFocus)),
             (Widgets{form.edit, form.ok, form.cancel}));
    adjustFocusPolicy(Qt::NoFocus, {form.edit, form.ok});
    QCOMPARE(accessibleList(&form, Widgets()), (Widgets{form.box, form.cancel}));
    form.box->hide();
    QCOMPARE(accessibleList(&form, AccessibleFilter()), (Widgets{&form, form.edit}));
    form.hide();
    QCOMPARE(accessibleList(&form, AccessibleFilter()), Widgets());
}

void UtilsTest::focusLevelsAreComparedAsNumbers()
{
    // In the order of their numbers: click focus is more than tab focus.
    const QVector<Qt::FocusPolicy> policies = {Qt::NoFocus, Qt::TabFocus, Qt::ClickFocus,
                                               Qt::StrongFocus, Qt::WheelFocus};
    QWidget window;
    Widgets all;
    for (const Qt::FocusPolicy policy : policies) {
        all.append(new QWidget(&window));
        adjustFocusPolicy(policy, {all.last()});
    }
    window.show();
    AccessibleFilter filter;
    for (int level = 0; level < policies.size(); ++level) {
        filter.setFilterWidgets({&window});
        filter.setFocusLevel(policies.at(level));
        QCOMPARE(accessibleList(&window, filter), all.mid(level));
        filter.filterWidgets().append(all.last());
        QCOMPARE(accessibleList(&window, filter), all.mid(level, all.size() - 1 - level));
    }
}

QTEST_MAIN(UtilsTest)
#include "utils-test.moc"
