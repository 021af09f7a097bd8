// SPDX-License-Identifier: MIT

#include "html-pictures_p.h"

#include "kovakit-qt/utils/safe-file_p.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QTextDocument>

namespace {

// In the text's own pixels, which Qt scales for the display like those of every picture.
constexpr int placeholderSize = 16;

// Only formats that are pixels and nothing else: a drawing can name further files, and an icon file
// can hold a picture of another size than it says.
bool isPixelFormat(const QByteArray &format)
{
    static const QSet<QByteArray> formats = {"png",  "jpg", "jpeg", "gif", "bmp",
                                             "webp", "xpm", "xbm",  "ppm"};
    return formats.contains(format);
}

QPixmap makePlaceholder()
{
    QPixmap pixmap(placeholderSize, placeholderSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QPen(Qt::gray, 1));
    painter.drawRect(0, 0, placeholderSize - 1, placeholderSize - 1);
    painter.drawLine(0, placeholderSize - 1, placeholderSize - 1, 0);
    return pixmap;
}

// The path of @p file with all links resolved, if it lies in @p folder; otherwise empty.
QString pathInside(const QString &folder, const QString &file)
{
    QString path = QFileInfo(file).canonicalFilePath();
    if (path.isEmpty())
        return path;
    const QString root = QFileInfo(folder).canonicalFilePath();
    const QString prefix = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
    return !root.isEmpty() && path.startsWith(prefix) ? path : QString();
}

QByteArray bytesOfDataUrl(const QUrl &url)
{
    const QByteArray text = url.path(QUrl::FullyEncoded).toLatin1();
    const int comma = text.indexOf(',');
    const QByteArray bytes = QByteArray::fromPercentEncoding(text.mid(comma + 1));
    return text.left(qMax(comma, 0)).endsWith(";base64") ? QByteArray::fromBase64(bytes) : bytes;
}

} // namespace

bool openInSearchPaths(QFile &file, const QUrl &name, const QStringList &searchPaths)
{
    if (name.scheme() == QLatin1String("qrc")) {
        file.setFileName(QLatin1Char(':') + name.path());
        return file.open(QIODevice::ReadOnly);
    }
    const QString wanted = name.scheme().isEmpty() ? name.path() : name.toLocalFile();
    if (wanted.isEmpty() || wanted.contains(QChar::Null))
        return false;
    QSet<QString> tried;
    for (const QString &folder : searchPaths) {
        if (tried.contains(folder))
            continue;
        tried.insert(folder);
        if (!isTrustedFolder(folder))
            continue;
        const QString path = pathInside(
            folder, QDir::isAbsolutePath(wanted) ? wanted : folder + QLatin1Char('/') + wanted);
        if (!path.isEmpty() && isTrustedFolder(QFileInfo(path).path())
            && openRegularFile(file, path))
            return true;
    }
    return false;
}

QByteArray readInSearchPaths(const QUrl &name, const QStringList &searchPaths, qint64 maxBytes)
{
    QFile file;
    return openInSearchPaths(file, name, searchPaths) && file.size() <= maxBytes
             ? file.read(maxBytes)
             : QByteArray();
}

HtmlPictures::HtmlPictures(const HtmlPictureLimits &limits)
    : m_limits(limits)
{
}

void HtmlPictures::addDownload(const QUrl &name, const QString &path)
{
    m_downloads.insert(name, path);
}

QString HtmlPictures::fileNameOf(const QUrl &name) const
{
    const auto download = m_downloads.constFind(name);
    return download == m_downloads.cend() ? name.fileName() : QFileInfo(*download).fileName();
}

QPixmap HtmlPictures::load(const QUrl &name, const QStringList &searchPaths)
{
    if (!m_pictures.contains(name))
        m_namesOfFile.insert(fileNameOf(name), name);
    const QPixmap pixmap = read(name, searchPaths);
    return pixmap.isNull() ? placeholder() : pixmap;
}

QPixmap HtmlPictures::placeholder()
{
    if (m_placeholder.isNull())
        m_placeholder = makePlaceholder();
    return m_placeholder;
}

QSet<QString> HtmlPictures::fileNames() const
{
    const QStringList names = m_namesOfFile.uniqueKeys();
    return QSet<QString>(names.begin(), names.end());
}

bool HtmlPictures::refresh(QTextDocument *document, const QSet<QString> &fileNames,
                           const QStringList &searchPaths)
{
    bool hasChanged = false;
    for (const QString &fileName : fileNames) {
        for (const QUrl &name : m_namesOfFile.values(fileName)) {
            const bool wasMissing = m_pictures[name].pixels == 0;
            const QPixmap pixmap = read(name, searchPaths);
            if (wasMissing && pixmap.isNull())
                continue;
            handOver(document, name, pixmap.isNull() ? placeholder() : pixmap);
            hasChanged = true;
        }
    }
    return hasChanged;
}

void HtmlPictures::handOver(QTextDocument *document, const QUrl &name, const QPixmap &pixmap)
{
    document->addResource(QTextDocument::ImageResource, name, pixmap);
    m_pictures[name].isHandedOver = true;
}

void HtmlPictures::clear(QTextDocument *document)
{
    for (auto it = m_pictures.cbegin(); it != m_pictures.cend(); ++it) {
        if (it->isHandedOver)
            document->addResource(QTextDocument::ImageResource, it.key(), QVariant());
    }
    m_pictures.clear();
    m_downloads.clear();
    m_namesOfFile.clear();
    m_pixels = 0;
}

QPixmap HtmlPictures::read(const QUrl &name, const QStringList &searchPaths)
{
    Picture &picture = m_pictures[name];
    m_pixels -= std::exchange(picture.pixels, 0);

    QPixmap pixmap;
    if (name.scheme() == QLatin1String("data")) {
        QByteArray bytes = bytesOfDataUrl(name);
        QBuffer buffer(&bytes);
        pixmap = decode(buffer, &picture.pixels);
    } else {
        QFile file;
        const QUrl download = QUrl::fromLocalFile(m_downloads.value(name));
        if (openInSearchPaths(file, name, searchPaths)
            || openInSearchPaths(file, download, searchPaths))
            pixmap = decode(file, &picture.pixels);
    }
    m_pixels += picture.pixels;
    return pixmap;
}

QPixmap HtmlPictures::decode(QIODevice &device, qint64 *pixels) const
{
    if (device.size() > m_limits.fileBytes)
        return QPixmap();
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    if (!isPixelFormat(reader.format()))
        return QPixmap();
    const QSize size = reader.size();
    const qint64 expected = qint64(size.width()) * size.height();
    if (size.isEmpty() || expected > m_limits.picturePixels
        || m_pixels + expected > m_limits.pagePixels)
        return QPixmap();
    const QImage image = reader.read();
    *pixels = image.isNull() ? 0 : expected;
    return QPixmap::fromImage(image);
}
