// SPDX-License-Identifier: MIT

#include "image-manager.h"

#include "kovakit-qt/utils/file-text_p.h"
#include "kovakit-qt/utils/safe-file_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/ui-path-manager.h>
#include <kovakit-qt/utils/util.h>

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValueRef>

#include <cmath>
#include <cstdlib>

namespace {

const char *const stateSuffixes[] = {"", "_hover", "_click", "_disable"};

// Art is drawn at four times its design size.
constexpr double artScale = 0.25;

// Reads around QPixmap's own cache, which can hand out the picture of a file that was replaced
// within the same second, and looks at the size before it decodes anything.
QPixmap readPicture(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return QPixmap();
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!size.isValid() || qint64(size.width()) * size.height() > ImageManager::maxPicturePixels)
        return QPixmap();
    return QPixmap::fromImageReader(&reader);
}

QPixmap scaled(const QPixmap &pixmap, const QSize &size)
{
    return pixmap.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

// Each step rounds before the next multiplies, so that a picture has the same size whichever of
// its states or uses asks for it.
QSize displaySize(const QSize &artSize, double scale)
{
    const auto side = [scale](int length) { return qRound(qRound(length * artScale) * scale); };
    return {side(artSize.width()), side(artSize.height())};
}

// The picture at @p logical size for a screen of @p ratio device pixels per logical pixel.
QPixmap scaledForRatio(const QPixmap &art, const QSize &logical, double ratio)
{
    QPixmap pixmap =
        scaled(art, {qRound(logical.width() * ratio), qRound(logical.height() * ratio)});
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

// Other processes may read the file at the same time. Nothing of a null picture is written.
void writeTempPicture(const QString &path, const QPixmap &art, const QSize &size)
{
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    if (!art.isNull())
        scaled(art, size).save(&png, "PNG");
    replaceFile(path, png.data());
}

// A separator would lead a temp picture out of its folder.
bool isFileName(const QString &name)
{
    return !name.contains(QLatin1Char('/')) && !name.contains(QChar::Null);
}

} // namespace

ImageManager *ImageManager::getInstance()
{
    static ImageManager instance;
    return &instance;
}

void ImageManager::initialize(ImageManager::InitializeType type)
{
    m_type = type;
    const UIPathManager *paths = UIPathManager::getInstance();
    m_imageFolder = paths->getPath(QStringLiteral("resource_path")) + QLatin1String("/images");
    m_tempImageFolder =
        paths->getPath(QStringLiteral("user_data_path")) + QLatin1String("/tmp_images");
    QDir().mkpath(m_tempImageFolder);
    readJson();
    if (type == PrepareAll)
        prepareImages();
}

void ImageManager::readJson()
{
    const QString path = UIPathManager::getInstance()->getPath(QStringLiteral("resource_path"))
                       + QLatin1String("/images.json");
    const QJsonObject description = QJsonDocument::fromJson(readFileText(path).toUtf8()).object();
    for (const auto &item : description.value(QLatin1String("images")).toArray())
        parseJson(item.toString());
    for (const auto &item : description.value(QLatin1String("tmp_images")).toArray())
        prepareTempImage(item.toString().remove(QLatin1Char(' ')));
}

void ImageManager::parseJson(const QString &name)
{
    ImageFile image;
    for (int state = 0; state < stateCount; ++state)
        image.fileNames[state] = name + QLatin1String(stateSuffixes[state]);
    m_images.insert_or_assign(name, std::move(image));
}

void ImageManager::prepareImages()
{
    for (auto &entry : m_images)
        load(entry.second);
}

void ImageManager::lazyLoad(const QString &name)
{
    const auto found = m_images.find(name);
    if (found != m_images.end() && !found->second.loaded)
        load(found->second);
}

void ImageManager::load(ImageFile &image) const
{
    const double scale = DPIinfo::getInstance()->getDPI();
    const double ratio = DPIinfo::getInstance()->getDPR();
    // The desktop's ratio has lost its fraction, and there may be sharper screens than the first.
    const double sharpestRatio = qGuiApp->devicePixelRatio();
    for (int state = 0; state < stateCount; ++state) {
        const QPixmap art = readPicture(getImageFullPath(image.fileNames[state]));
        if (art.isNull()) {
            image.fileNames[state].clear();
            continue;
        }
        const QSize logical = displaySize(art.size(), scale);
        image.pixmaps[state] = scaledForRatio(art, logical, ratio);
        if (sharpestRatio > ratio)
            image.sharpestPixmaps[state] = scaledForRatio(art, logical, sharpestRatio);
        image.loaded = true;
    }
}

void ImageManager::prepareTempImage(const QString &name)
{
    if (!isFileName(name)) {
        qCWarning(debug_message) << "Cannot write temp image" << name << "outside its folder";
        return;
    }
    const QPixmap art = readPicture(getImageFullPath(name));
    const QSize size = displaySize(art.size(), DPIinfo::getInstance()->getDPI());
    writeTempPicture(getTempImageFullPath(name), art, size);
    // Qt finds it beside the other one, by its name and for its icons alone.
    const int ratio = int(std::ceil(qGuiApp->devicePixelRatio()));
    if (ratio > 1)
        writeTempPicture(
            getTempImageFullPath(QStringLiteral("%1@%2x").arg(name, QString::number(ratio))), art,
            size * ratio);
}

// With the state that can be shown in place of @p type.
std::pair<const ImageManager::ImageFile *, int> ImageManager::find(const QString &name,
                                                                   ImageType type)
{
    const auto found = m_images.find(name);
    if (found == m_images.end()) {
        qCWarning(debug_message) << "Cannot load pixmap" << name;
        return {nullptr, Default};
    }
    if (m_type == LazyLoad)
        lazyLoad(name);

    const ImageFile &image = found->second;
    const int state = type >= 0 && type < stateCount ? int(type) : int(Default);
    if (!image.fileNames[state].isEmpty())
        return {&image, state};
    qCWarning(debug_message) << "Cannot load pixmap" << name << "with type" << state
                             << "[use default icon]";
    return {&image, Default};
}

QPixmap ImageManager::getImage(const QString &name, ImageManager::ImageType type)
{
    const auto [image, state] = find(name, type);
    return image ? image->pixmaps[state] : QPixmap();
}

QIcon ImageManager::getIcon(const QString &name, ImageManager::ImageType type)
{
    const auto [image, state] = find(name, type);
    if (!image)
        return QIcon();
    QIcon icon(image->pixmaps[state]);
    icon.addPixmap(image->sharpestPixmaps[state]);
    return icon;
}

const QString &ImageManager::getImageFolder() const
{
    if (m_imageFolder.isEmpty()) {
        qCWarning(debug_message) << "ImageManager is not initialized";
        std::abort();
    }
    return m_imageFolder;
}

const QString &ImageManager::getTempImageFolder() const
{
    if (m_tempImageFolder.isEmpty()) {
        qCWarning(debug_message) << "ImageManager is not initialized";
        std::abort();
    }
    return m_tempImageFolder;
}

QString ImageManager::getImageFullPath(const QString &fileName) const
{
    return m_imageFolder + QDir::separator() + fileName + QLatin1String(".png");
}

QString ImageManager::getTempImageFullPath(const QString &name) const
{
    return m_tempImageFolder + QDir::separator() + QLatin1String("tmp_") + name
         + QLatin1String(".png");
}

QPixmap getGlobalImage(const char *name, ImageManager::ImageType type)
{
    return getGlobalImage(QString::fromLatin1(name), type);
}

QPixmap getGlobalImage(const QString &name, ImageManager::ImageType type)
{
    return ImageManager::getInstance()->getImage(name, type);
}
