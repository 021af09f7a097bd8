#include "html-text-browser.h"

#include "html-download-queue_p.h"
#include "html-limits_p.h"
#include "html-pictures_p.h"
#include "html-reading-place_p.h"
#include "html-scan_p.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QFileInfo>
#include <QScrollBar>
#include <QTextCodec>
#include <QTimer>

#include <optional>

namespace {

constexpr int gatherInterval = 40;
constexpr qint64 maxPageBytes = qint64(4) * 1024 * 1024;

QString pictureFolder()
{
    return QDir::tempPath() + QLatin1String("/kovaline_help/image");
}

bool isRemote(const QString &address)
{
    const QString scheme = QUrl(address, QUrl::TolerantMode).scheme();
    return scheme == QLatin1String("http") || scheme == QLatin1String("https");
}

// The name by which the laid out text asks for the picture with @p source.
QUrl nameInText(QString source)
{
    return QUrl(source.replace(QLatin1String("&amp;"), QLatin1String("&")));
}

} // namespace

HtmlTextBrowser::HtmlTextBrowser(QWidget *parent)
    : QTextBrowser(parent)
    , m_pictures(std::make_unique<HtmlPictures>())
    , m_queue(std::make_unique<HtmlDownloadQueue>())
    , m_gather(new QTimer(this))
{
    m_gather->setSingleShot(true);
    connect(m_gather, &QTimer::timeout, this, &HtmlTextBrowser::showPicturesAnew);
}

HtmlTextBrowser::~HtmlTextBrowser()
{
    // Each job ends itself; there may be no event loop any more that would delete it later.
    for (ImageDownloader *job : std::exchange(downloaders, {})) {
        job->stop();
        job->deleteLater();
    }
}

void HtmlTextBrowser::setText(const QString &text)
{
    m_gather->stop();
    m_arrivedFiles.clear();
    m_pictures->clear(document());
    if (!document()->baseUrl().isEmpty())
        document()->setBaseUrl(QUrl());

    if (!Qt::mightBeRichText(text) || !isWithinLimits(text)) {
        QTextEdit::setPlainText(shownPlain(text));
        return;
    }
    beginDownloads(text);
    QTextEdit::setText(text);
}

void HtmlTextBrowser::beginDownloads(const QString &text)
{
    const HtmlPictureSources found = scanPictureSources(text);
    if (!found.hasBase)
        return;
    baseUrl = found.baseUrl;
    const QString folder = pictureFolder();
    QDir().mkpath(folder);
    setSearchPaths(QStringList(folder) + searchPaths());

    QVector<ImageDownloader *> jobs;
    for (const QString &source : found.sources) {
        const int nameAt = source.lastIndexOf(QLatin1Char('/')) + 1;
        const QString file = folder + QLatin1String("/../image/") + source.mid(nameAt);
        const QString address = baseUrl + source;
        if (nameAt == 0 || source.leftRef(nameAt) == QLatin1String("../image/"))
            m_pictures->addDownload(nameInText(source), file);

        if (ImageDownloader *earlier = downloaders.take(address)) {
            earlier->stop();
            m_queue->take(earlier);
            earlier->deleteLater();
        }
        auto *job = new ImageDownloader(file, address, nullptr);
        connect(job, &ImageDownloader::sigDownloadFinish, this,
                &HtmlTextBrowser::slotDownloadFinished);
        downloaders.insert(address, job);
        if (isRemote(address))
            jobs.append(job);
        else
            job->refuse();
    }
    m_queue->add(jobs);
}

void HtmlTextBrowser::slotDownloadFinished(QString url, int)
{
    if (ImageDownloader *job = downloaders.take(url)) {
        job->stop();
        m_queue->take(job);
        m_arrivedFiles.insert(QFileInfo(job->path()).fileName());
        job->deleteLater();
    }
    reload();
    // There is nothing left to wait for.
    if (downloaders.isEmpty())
        m_gather->start(0);
}

void HtmlTextBrowser::reload()
{
    if (!source().isEmpty() && m_arrivedFiles.isEmpty()) {
        QTextBrowser::reload();
        return;
    }
    if (m_arrivedFiles.isEmpty())
        m_arrivedFiles = m_pictures->fileNames();
    if (!m_gather->isActive())
        m_gather->start(gatherInterval);
}

void HtmlTextBrowser::showPicturesAnew()
{
    const QSet<QString> files = std::exchange(m_arrivedFiles, {});
    if (!m_pictures->refresh(document(), files, searchPaths()))
        return;
    const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
    // At the top a reader has not begun to read.
    std::optional<HtmlReadingPlace> place;
    if (scrolled.y() > 0)
        place.emplace(document(), QRect(scrolled, viewport()->size()));
    document()->markContentsDirty(0, document()->characterCount());
    // Lays out to the end, so that the scroll bars have their ranges again.
    document()->documentLayout()->documentSize();
    horizontalScrollBar()->setValue(scrolled.x());
    verticalScrollBar()->setValue(place ? scrolled.y() + qRound(place->shift()) : 0);
    viewport()->update();
}

QVariant HtmlTextBrowser::loadResource(int type, const QUrl &name)
{
    if (type == QTextDocument::ImageResource)
        return m_pictures->load(name, searchPaths());

    const bool isPage =
        type == QTextDocument::HtmlResource || type == QTextDocument::MarkdownResource;
    const qint64 maxBytes = isPage ? maxPageBytes : maxStyleSheetBytes;
    QByteArray bytes;
    QFile file;
    if (openInSearchPaths(file, name, searchPaths()) && file.size() <= maxBytes)
        bytes = file.read(maxBytes);
    if (isPage) {
        const QTextCodec *codec =
            QTextCodec::codecForHtml(bytes, QTextCodec::codecForName("UTF-8"));
        const QString text = codec->toUnicode(bytes);
        return isWithinLimits(text) ? text : shownPlain(text).toHtmlEscaped();
    }
    return styleSheet(name, bytes);
}

// Qt keeps one resource for each name, of whatever type. Where it is asked for a picture and has
// none, it looks for a file of that name itself, wherever it is; so there is always a picture.
QVariant HtmlTextBrowser::styleSheet(const QUrl &name, const QByteArray &bytes)
{
    const QPixmap picture = m_pictures->load(name, searchPaths());
    if (bytes.isEmpty() || bytes.contains("@import") || !source().isRelative())
        return picture;
    m_pictures->handOver(document(), name, picture);
    return bytes;
}
