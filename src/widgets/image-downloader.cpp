#include "image-downloader.h"

#include "plain-access-manager_p.h"

#include <kovakit-qt/utils/safe-file_p.h>

#include <QFileInfo>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace {

// Reading takes as long as the square of the number of pieces that wait, and a server may send
// each byte as a piece of its own.
constexpr qint64 readStep = qint64(16) * 1024;

} // namespace

ImageDownloader::ImageDownloader(const QString &path, const QString &address, QObject *parent)
    : QObject(parent)
    , filePath(path)
    , url(address)
{
}

ImageDownloader::~ImageDownloader()
{
    stop();
    if (manager)
        manager->deleteLater();
}

void ImageDownloader::start()
{
    if (m_started.isValid() || finished)
        return;
    if (!manager)
        manager = new PlainAccessManager;
    connect(manager, &QNetworkAccessManager::finished, this, &ImageDownloader::slotFinishDownload);
    m_started.start();
    m_active.start();

    const QUrl remote(url, QUrl::TolerantMode);
    const QFileInfo local(remote.toLocalFile());
    if (remote.isLocalFile() && local.exists() && !local.isFile()) {
        refuse();
        return;
    }
    QNetworkRequest request(remote);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    m_reply = manager->get(request);
    // What is read in one step is bounded too; the rest stays with the server.
    m_reply->setReadBufferSize(readStep);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &ImageDownloader::read);
    connect(m_reply, &QNetworkReply::readyRead, this, &ImageDownloader::read);
}

void ImageDownloader::takeOver(ImageDownloader *earlier)
{
    if (manager || !std::exchange(earlier->m_hasGoodManager, false))
        return;
    manager = std::exchange(earlier->manager, nullptr);
    manager->disconnect(earlier);
}

void ImageDownloader::read()
{
    m_active.start();
    if (!m_reply)
        return;
    m_body += m_reply->readAll();
    const qint64 announced = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (announced > maxBytes || m_body.size() > maxBytes)
        m_reply->abort();
}

void ImageDownloader::stop()
{
    finished = true;
    if (QNetworkReply *reply = std::exchange(m_reply, nullptr)) {
        manager->disconnect(this);
        reply->disconnect(this);
        reply->abort();
        // At once: an error that is on its way from the network's thread has nobody to go to.
        delete reply;
    }
}

void ImageDownloader::refuse()
{
    QMetaObject::invokeMethod(
        this, [this] { finish(-1); }, Qt::QueuedConnection);
}

void ImageDownloader::giveUp()
{
    if (m_reply)
        m_reply->abort();
}

qint64 ImageDownloader::idleTime() const
{
    return m_active.isValid() ? m_active.elapsed() : 0;
}

qint64 ImageDownloader::runningTime() const
{
    return m_started.isValid() ? m_started.elapsed() : 0;
}

void ImageDownloader::slotFinishDownload(QNetworkReply *reply)
{
    m_reply = nullptr;
    reply->deleteLater();
    if (finished)
        return;
    const bool isComplete = reply->error() == QNetworkReply::NoError;
    if (isComplete)
        m_body += reply->readAll();
    if (!isComplete || m_body.size() > maxBytes) {
        finish(-1);
        return;
    }
    replaceOwnFile(filePath, m_body);
    m_hasGoodManager = manager && reply->manager() == manager;
    finish(0);
}

void ImageDownloader::finish(int code)
{
    if (finished)
        return;
    m_body = QByteArray();
    result = code;
    finished = true;
    Q_EMIT sigDownloadFinish(url, result);
}
