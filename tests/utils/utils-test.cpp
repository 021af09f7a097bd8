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

class UtilsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void installReplacesTheStrings();
    void pathsAreReplacedWithAWarning();
    void tooltipShowsTheTextAsItIs();
    void fileTypesHaveIcons();
    void fileTypesCanBeAdded();
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
    const struct
    {
        QString type;
        QString extensions;
    } rows[] = {
        {"acc", "acc ade adp adn accdr accdb accdt mdb mda mdn mdt mdw mdf mde accde mam maq mar "
                "mat maf"},
        {"ai", "ai"},
        {"audio", "mp3 aac flac m4a m4b aif ogg pcm wav cda mid mp2 mka mpc ape ra ac3 dts wma"},
        {"bkpi", "bkpi"},
        {"doc", "doc docx wri rtf"},
        {"exe", "exe"},
        {"fla", "fla"},
        {"htm", "htm html"},
        {"idn", "idn"},
        {"image", "bmp ico tif tiff ufo raw arw srf sr2 dcr k25 kdc cr2 crw nef mrw ptx pef raf "
                  "3fr erf mef mos orf rw2 dng x3f jpg jpe jpeg png gif"},
        {"iso", "iso bin img mds nrg daa"},
        {"code", "js css actproj ad akp applescript as asax asc ascx asm asmx asp aspx asr c cc "
                 "php jsx xml xhtml mhtml cpp cs cxx"},
        {"pdf", "pdf"},
        {"ppt", "ppt pptx pps ppsx"},
        {"psd", "psd"},
        {"swf", "swf flv f4v"},
        {"ttf", "ttf ttc otf"},
        {"txt", "txt"},
        {"video", "avi 3gp 3g2 asf dat divx dvr-ms m2t m2ts m4v mkv mp4 mts mov qt tp trp ts vob "
                  "wmv xvid ac3 amr rm rmvb ifo mpeg mpg mpe m1v m2v mpeg1 mpeg2 mpeg4 ogv webm"},
        {"xls", "xls xla xlb xlc xld xlk xll xlm xlt xlv xlw xlsx xlsm xlsb xltm xlam"},
        {"zip", "zip tar 7z bz2 gz zip tgz tbz rar"},
    };
    const FileTypeMap *map = FileTypeMap::getInstance();
    int known = 0;
    for (const auto &row : rows) {
        for (const QString &extension : row.extensions.split(' ')) {
            // Of an extension in two rows the later one counts.
            const QString type = extension == "ac3" ? "video" : row.type;
            QCOMPARE(map->getFiletypeMapping(extension, false), type + ".png");
            QCOMPARE(map->getFiletypeMapping(extension.toUpper(), true), type + "_removed.png");
            ++known;
        }
    }
    QCOMPARE(known, 187); // "ac3" and "zip" are listed twice
    for (const char *unknown : {"", "foo", ".txt", "a.txt", " ", "mp3 aac", "h", "foo"}) {
        QCOMPARE(map->getFiletypeMapping(unknown, false), "xxx.png");
        QCOMPARE(map->getFiletypeMapping(unknown, true), "xxx_removed.png");
    }
}

void UtilsTest::fileTypesCanBeAdded()
{
    FileTypeMap *map = FileTypeMap::getInstance();
    map->mappingFile("note", "memo mp3  jot");
    for (const char *extension : {"memo", "MP3", "", "jot"})
        QCOMPARE(map->getFiletypeMapping(extension, false), "note.png");
    QCOMPARE(FileTypeMap().getFiletypeMapping("mp3", false), "audio.png");
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
