// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QSet>

// Whatever the description of the pictures says, the program starts, every name in it can be asked
// for, and nothing is written but temp pictures in their folder.

namespace {

// Some files as a host has them, and some that are no pictures.
void makeHost()
{
    UIPathManager *paths = UIPathManager::getInstance();
    paths->setPath(QStringLiteral("resource_path"), scratchFolder());
    paths->setPath(QStringLiteral("user_data_path"), scratchFolder() + QLatin1String("/user"));
    const QString images = scratchFolder() + QLatin1String("/images/");
    QDir().mkpath(images + QLatin1String("folder.png"));
    QImage art(8, 8, QImage::Format_ARGB32);
    art.fill(Qt::red);
    for (const char *name : {"a", "b", "b_hover", "b_click", "b_disable"})
        expect(art.save(images + QLatin1String(name) + QLatin1String(".png")), "art is written");
    writeFile(images + QLatin1String("broken.png"), "no picture");
}

QSet<QString> filesBelow(const QString &folder)
{
    QSet<QString> found;
    for (QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        found.insert(it.next());
    return found;
}

void checkFiles(const QString &tempFolder)
{
    static const QSet<QString> before = [&tempFolder] {
        QDir(tempFolder).removeRecursively();
        QDir().mkpath(tempFolder);
        return filesBelow(scratchFolder());
    }();
    for (const QString &path : filesBelow(scratchFolder()) - before) {
        expect(QFileInfo(path).path() == tempFolder, "temp pictures stay in their folder");
        expect(QFileInfo(path).fileName().startsWith(QLatin1String("tmp_")),
               "temp pictures have their names");
        QFile::remove(path);
    }
    expect((before - filesBelow(scratchFolder())).isEmpty(), "no file has gone");
}

} // namespace

// Qt's own reader loses some bytes when a name of an object is written twice, which nobody can tell
// from a leak of the kit: its frames have no pointers to walk along.
extern "C" int __lsan_is_turned_off()
{
    return 1;
}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzing(argc, argv);
    makeHost();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    writeFile(scratchFolder() + QLatin1String("/images.json"), bytesOf(data + 1, size - 1));
    // The one instance of a program would keep the names of all inputs.
    ImageManager manager;
    manager.initialize(ImageManager::InitializeType(data[0] % 3));
    for (const auto &entry : manager.m_images) {
        const QString &name = entry.first;
        for (const int type : {-1, 0, 1, 2, 3, 4}) {
            const auto state = ImageManager::ImageType(type);
            const QPixmap picture = manager.getImage(name, state);
            expect(picture.isNull() == manager.getIcon(name, state).isNull(),
                   "there is an icon where there is a picture");
        }
        const bool isLoaded = data[0] % 3 != 2;
        if (name == QLatin1String("a") || name == QLatin1String("b"))
            expect(manager.getImage(name, ImageManager::Default).isNull() != isLoaded,
                   "what can be read is there");
    }
    checkFiles(manager.getTempImageFolder());
    return 0;
}
