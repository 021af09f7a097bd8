// SPDX-License-Identifier: MIT

#include "bench.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/ui-path-manager.h>
#include <kovakit-qt/utils/util.h>

#include <support/test-host.h>

#include <QDir>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <vector>

namespace {

constexpr int nameCount = 200;
constexpr int tempCount = 50;
constexpr int states = 4;
const char *const suffixes[states] = {"", "_hover", "_click", "_disable"};

QString pictureName(int index)
{
    return QStringLiteral("picture_%1").arg(index);
}

// A resource folder with the theme's icons under many names.
class ManyPictures
{
public:
    ManyPictures()
        : m_folder(scratchFolder() + QLatin1String("/many"))
    {
        const QString theme = themeFolder() + QLatin1String("/images/");
        QStringList icons = QDir(theme).entryList({QStringLiteral("bt_*_hover.png")});
        icons.replaceInStrings(QLatin1String("_hover.png"), QString());
        if (icons.isEmpty() || !QDir().mkpath(m_folder + QLatin1String("/images")))
            qFatal("the house theme is not built");

        QJsonArray names;
        QJsonArray temps;
        for (int i = 0; i < nameCount; ++i) {
            for (const char *suffix : suffixes) {
                const QString file = QLatin1String(suffix) + QLatin1String(".png");
                QFile::copy(theme + icons.at(i % icons.size()) + file,
                            pathOf(pictureName(i), suffix));
            }
            names.append(pictureName(i));
            if (i < tempCount)
                temps.append(pictureName(i));
        }
        const QJsonObject description{{QStringLiteral("images"), names},
                                      {QStringLiteral("tmp_images"), temps}};
        writeScratchFile(QStringLiteral("many/images.json"), QJsonDocument(description).toJson());
    }

    [[nodiscard]] QString pathOf(const QString &name, const char *suffix) const
    {
        return m_folder + QLatin1String("/images/") + name + QLatin1String(suffix)
             + QLatin1String(".png");
    }

    // Makes it the resource folder of the host while it lives.
    class Host
    {
    public:
        explicit Host(const ManyPictures &pictures) { setResources(pictures.m_folder); }
        ~Host()
        {
            setResources(themeFolder());
            ImageManager::getInstance()->initialize(ImageManager::LazyLoad);
        }
        Q_DISABLE_COPY(Host)

    private:
        static void setResources(const QString &folder)
        {
            QLoggingCategory::setFilterRules(QStringLiteral("debug.message.warning=false"));
            UIPathManager::getInstance()->setPath(QStringLiteral("resource_path"), folder);
            QLoggingCategory::setFilterRules(QString());
        }
    };

private:
    const QString m_folder;
};

const ManyPictures &manyPictures()
{
    static const ManyPictures pictures;
    return pictures;
}

// The start-up of a host; the pictures of an earlier one are freed beforehand.
Bench::Side startUp(ImageManager::InitializeType type)
{
    return [type] {
        const ManyPictures::Host host(manyPictures());
        ImageManager *manager = ImageManager::getInstance();
        manager->initialize(ImageManager::LazyLoad);
        const Stopwatch watch;
        manager->initialize(type);
        return watch.milliseconds();
    };
}

QPixmap decodeAndScale(const QString &path)
{
    const QPixmap art = QPixmap::fromImage(QImage(path));
    const double scale = DPIinfo::getInstance()->getDPI();
    return art.scaled(qRound(art.width() * 0.25 * scale), qRound(art.height() * 0.25 * scale),
                      Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

double bareTemps()
{
    const Stopwatch watch;
    for (int i = 0; i < tempCount; ++i) {
        decodeAndScale(manyPictures().pathOf(pictureName(i), ""))
            .save(scratchFolder() + QLatin1String("/bare_") + pictureName(i)
                  + QLatin1String(".png"));
    }
    return watch.milliseconds();
}

double bareAll()
{
    const double temps = bareTemps();
    std::vector<QPixmap> pictures;
    const Stopwatch watch;
    for (int i = 0; i < nameCount; ++i) {
        for (const char *suffix : suffixes)
            pictures.push_back(decodeAndScale(manyPictures().pathOf(pictureName(i), suffix)));
    }
    return temps + watch.milliseconds();
}

double secondFetch()
{
    const ManyPictures::Host host(manyPictures());
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);
    const QString name = pictureName(nameCount / 2);
    QPixmap picture = getGlobalImage(name, ImageManager::Default);
    constexpr int times = 10000;
    const Stopwatch watch;
    for (int i = 0; i < times; ++i)
        picture = getGlobalImage(name, ImageManager::Default);
    return watch.milliseconds() * 1000 / times;
}

void images(Bench &bench)
{
    bench.compare({"images/eager-start", "ms", 1.05}, startUp(ImageManager::PrepareAll), bareAll);
    bench.compare({"images/lazy-start", "ms", 1.05}, startUp(ImageManager::LazyLoad), bareTemps);
    bench.measure({"images/second-fetch", "us", 1}, secondFetch);
}

const BenchTopic topic(images);

} // namespace
