// SPDX-License-Identifier: MIT

#include "html-pictures_p.h"

#include "html-picture-cost_p.h"
#include "kovakit-qt/utils/safe-file_p.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QTextDocument>

namespace {

// In the text's own pixels, which Qt scales for the display like those of every picture.
constexpr int placeholderSize = 16;

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
    m_failed.clear();
    m_pixels = 0;
    m_cost = 0;
}

QPixmap HtmlPictures::read(const QUrl &name, const QStringList &searchPaths)
{
    Picture &picture = m_pictures[name];
    m_pixels -= std::exchange(picture.pixels, 0);
    m_cost -= std::exchange(picture.cost, 0);
    const QPixmap pixmap = decode(bytesOf(name, searchPaths), picture);
    m_pixels += picture.pixels;
    return pixmap;
}

QByteArray HtmlPictures::bytesOf(const QUrl &name, const QStringList &searchPaths) const
{
    if (name.scheme() == QLatin1String("data"))
        return bytesOfDataUrl(name);
    const QByteArray bytes = readInSearchPaths(name, searchPaths, m_limits.fileBytes);
    const QUrl download = QUrl::fromLocalFile(m_downloads.value(name));
    return bytes.isEmpty() ? readInSearchPaths(download, searchPaths, m_limits.fileBytes) : bytes;
}

// Whether there is time enough for it.
bool HtmlPictures::charge(Picture &picture, double nanoseconds)
{
    const bool isWithin = picture.cost + nanoseconds <= double(m_limits.pictureSteps) * 1000
                       && m_cost + nanoseconds <= double(m_limits.pageSteps) * 1000;
    if (isWithin) {
        picture.cost += nanoseconds;
        m_cost += nanoseconds;
    }
    return isWithin;
}

QPixmap HtmlPictures::decode(QByteArray bytes, Picture &picture)
{
    if (bytes.isEmpty() || !charge(picture, costOfLooking(bytes.size())))
        return QPixmap();
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    if (m_failed.contains(hash))
        return QPixmap();
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (!isPixelFormat(format) || !charge(picture, costOfHeader(bytes, format)))
        return QPixmap();
    const QSize size = reader.size();
    const qint64 expected = qint64(size.width()) * size.height();
    if (size.isEmpty() || expected > m_limits.picturePixels
        || m_pixels + expected > m_limits.pagePixels
        || !charge(picture, costOfDecoding(bytes, format, size)))
        return QPixmap();
    const QImage image = reader.read();
    if (image.isNull())
        m_failed.insert(hash);
    else
        picture.pixels = expected;
    return QPixmap::fromImage(image);
}
