#include <kovakit-qt/utils/file-type-map.h>

#include <QtTest>

class FileTypeMapTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesIcons_data();
    void namesIcons();
    void unknownExtensionsStayUnknown();
};

void FileTypeMapTest::namesIcons_data()
{
    QTest::addColumn<QString>("stem");
    const auto rows = [](const char *stem, std::initializer_list<const char *> extensions) {
        for (const char *extension : extensions)
            QTest::newRow(extension) << QString::fromLatin1(stem);
    };
    // The first and the last of each row, what looks odd, and what two rows list.
    rows("acc", {"acc", "maf", "MDB"});
    rows("ai", {"ai"});
    rows("audio", {"mp3", "Mp3", "MP3", "wma"});
    rows("bkpi", {"bkpi"});
    rows("doc", {"doc", "DOCX", "rtf"});
    rows("exe", {"exe"});
    rows("fla", {"fla"});
    rows("htm", {"htm", "html"});
    rows("idn", {"idn"});
    rows("image", {"bmp", "3fr", "JPG", "gif"});
    rows("iso", {"iso", "daa"});
    rows("code", {"js", "c", "as", "cxx"});
    rows("pdf", {"pdf"});
    rows("ppt", {"ppt", "ppsx"});
    rows("psd", {"psd"});
    rows("swf", {"swf", "f4v"});
    rows("ttf", {"ttf", "otf"});
    rows("txt", {"txt"});
    rows("video", {"avi", "ac3", "dvr-ms", "mpeg4", "webm"});
    rows("xls", {"xls", "xlam"});
    rows("zip", {"zip", "7z", "rar"});
    rows("xxx", {"", "foo", ".txt", "a.txt", " ", "mp3 aac", "h"});
}

void FileTypeMapTest::namesIcons()
{
    QFETCH(QString, stem);
    const QString extension = QString::fromLatin1(QTest::currentDataTag());
    const FileTypeMap *map = FileTypeMap::getInstance();
    QCOMPARE(map->getFiletypeMapping(extension, false), stem + ".png");
    QCOMPARE(map->getFiletypeMapping(extension, true), stem + "_removed.png");
}

void FileTypeMapTest::unknownExtensionsStayUnknown()
{
    const FileTypeMap *map = FileTypeMap::getInstance();
    for (int i = 0; i < 3; ++i)
        QCOMPARE(map->getFiletypeMapping("blend", false), "xxx.png");
}

QTEST_GUILESS_MAIN(FileTypeMapTest)
#include "file-type-map-test.moc"
