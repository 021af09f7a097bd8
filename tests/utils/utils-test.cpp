#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/utils/escape-tooltip.h>
#include <kovakit-qt/utils/file-type-map.h>
#include <kovakit-qt/utils/ui-path-manager.h>
#include <kovakit-qt/utils/util.h>

#include "support/warning-catcher.h"

#include <QtTest>
#include <QtWidgets>

using Widgets = QList<QWidget *>;

class UtilsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void installReplacesTheStrings();
    void pathsAreReplacedWithAWarning();
    void tooltipShowsTheTextAsItIs();
    void fileTypesHaveIcons();
    void focusListWalksParentsBeforeChildren();
    void focusListLeavesOutWhatIsHiddenOrExcluded();
    void focusLevelsAreComparedAsNumbers();
};

namespace {

struct Form : QWidget
{
    Form()
        : edit(new QLineEdit)
        , box(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
        , ok(box->button(QDialogButtonBox::Ok))
        , cancel(box->button(QDialogButtonBox::Cancel))
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(edit);
        layout->addWidget(box);
        show();
    }

    QWidget *edit;
    QDialogButtonBox *box;
    QWidget *ok;
    QWidget *cancel;
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
    // The first and the last of each row, what looks odd, and what two rows list.
    const QMap<QString, QStringList> extensionsByStem = {
        {"acc", {"acc", "maf", "MDB"}},
        {"ai", {"ai"}},
        {"audio", {"mp3", "Mp3", "MP3", "wma"}},
        {"bkpi", {"bkpi"}},
        {"doc", {"doc", "DOCX", "rtf"}},
        {"exe", {"exe"}},
        {"fla", {"fla"}},
        {"htm", {"htm", "html"}},
        {"idn", {"idn"}},
        {"image", {"bmp", "3fr", "JPG", "gif"}},
        {"iso", {"iso", "daa"}},
        {"code", {"js", "c", "as", "cxx"}},
        {"pdf", {"pdf"}},
        {"ppt", {"ppt", "ppsx"}},
        {"psd", {"psd"}},
        {"swf", {"swf", "f4v"}},
        {"ttf", {"ttf", "otf"}},
        {"txt", {"txt"}},
        {"video", {"avi", "ac3", "dvr-ms", "mpeg4", "webm"}},
        {"xls", {"xls", "xlam"}},
        {"zip", {"zip", "7z", "rar"}},
        {"xxx", {"", "foo", ".txt", "a.txt", " ", "mp3 aac", "h", "foo"}},
    };
    const FileTypeMap *map = FileTypeMap::getInstance();
    for (auto row = extensionsByStem.begin(); row != extensionsByStem.end(); ++row) {
        for (const QString &extension : row.value()) {
            QCOMPARE(map->getFiletypeMapping(extension, false), row.key() + ".png");
            QCOMPARE(map->getFiletypeMapping(extension, true), row.key() + "_removed.png");
        }
    }
}

void UtilsTest::focusListWalksParentsBeforeChildren()
{
    Form form;
    QCOMPARE(accessibleList(&form, Widgets()), (Widgets{form.edit, form.ok, form.cancel}));
    form.box->setFocusPolicy(Qt::ClickFocus);
    QCOMPARE(accessibleList(&form, Widgets()),
             (Widgets{form.edit, form.box, form.ok, form.cancel}));
    QCOMPARE(accessibleList(&form, AccessibleFilter()),
             (Widgets{&form, form.edit, form.box, form.ok, form.cancel}));
    adjustFocusPolicy(Qt::NoFocus, {form.edit, form.ok});
    QCOMPARE(accessibleList(&form, Widgets()), (Widgets{form.box, form.cancel}));
}

void UtilsTest::focusListLeavesOutWhatIsHiddenOrExcluded()
{
    Form form;
    QCOMPARE(accessibleList(nullptr, AccessibleFilter()), Widgets());
    form.box->setFocusPolicy(Qt::StrongFocus);
    QCOMPARE(accessibleList(&form, {form.box, form.edit}), (Widgets{form.ok, form.cancel}));
    QCOMPARE(accessibleList(&form, AccessibleFilter({&form, form.box}, Qt::NoFocus)),
             (Widgets{form.edit, form.ok, form.cancel}));
    form.box->hide();
    QCOMPARE(accessibleList(&form, Widgets()), Widgets{form.edit});
    form.hide();
    QCOMPARE(accessibleList(&form, AccessibleFilter()), Widgets());
}

void UtilsTest::focusLevelsAreComparedAsNumbers()
{
    Form form;
    form.edit->setFocusPolicy(Qt::ClickFocus);
    form.ok->setFocusPolicy(Qt::TabFocus);
    form.cancel->setFocusPolicy(Qt::WheelFocus);
    AccessibleFilter filter;
    filter.setFocusLevel(Qt::TabFocus);
    QCOMPARE(accessibleList(&form, filter), (Widgets{form.edit, form.ok, form.cancel}));
    filter.setFocusLevel(Qt::StrongFocus);
    QCOMPARE(accessibleList(&form, filter), Widgets{form.cancel});
    filter.filterWidgets().append(form.cancel);
    QCOMPARE(accessibleList(&form, filter), Widgets());
}

QTEST_MAIN(UtilsTest)
#include "utils-test.moc"
