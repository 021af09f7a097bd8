// SPDX-License-Identifier: MIT

#include "image-downloader.h"

#include "kovakit-qt/utils/safe-file_p.h"
#include "plain-access-manager_p.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace {

// What is read in one step; the rest stays with the server.
constexpr qint64 readStep = qint64(64) * 1024;

// It may be in the middle of its signal.
struct DeleteLater
{
    void operator()(QObject *object) const { object->deleteLater(); }
};

} // namespace

class ImageDownloader::Private
{
public:
    Private(ImageDownloader *downloader, const QString &path, const QString &address)
        : q(downloader)
        , filePath(path)
        , url(address)
    {
    }

    void read();
    void finish(int code);

    ImageDownloader *const q;
    const QString filePath;
    const QString url;
    std::unique_ptr<QNetworkAccessManager, DeleteLater> manager;
    bool finished = false;
    QNetworkReply *reply = nullptr;
    bool hasGoodManager = false;
    QByteArray body;
    QElapsedTimer started;
    QElapsedTimer active;
};

void ImageDownloader::Private::read()
{
    active.start();
    if (!reply)
        return;
    body += reply->readAll();
    const qint64 announced = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (announced > maxBytes || body.size() > maxBytes)
        reply->abort();
}

void ImageDownloader::Private::finish(int code)
{
    if (finished)
        return;
    body = QByteArray();
    finished = true;
    Q_EMIT q->sigDownloadFinish(url, code);
}

ImageDownloader::ImageDownloader(const QString &path, const QString &address, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, path, address))
{
}

ImageDownloader::~ImageDownloader()
{
    stop();
}

bool ImageDownloader::isFinished() const
{
    return d->finished;
}

QString ImageDownloader::path() const
{
    return d->filePath;
}

void ImageDownloader::start()
{
    if (d->started.isValid() || d->finished)
        return;
    if (!d->manager)
        d->manager.reset(new PlainAccessManager);
    connect(d->manager.get(), &QNetworkAccessManager::finished, this,
            &ImageDownloader::slotFinishDownload);
    d->started.start();
    d->active.start();

    const QUrl remote(d->url, QUrl::TolerantMode);
    const QFileInfo local(remote.toLocalFile());
    if (remote.isLocalFile() && local.exists() && !local.isFile()) {
        refuse();
        return;
    }
    d->reply = d->manager->get(QNetworkRequest(remote));
    d->reply->setReadBufferSize(readStep);
    const auto read = [this] { d->read(); };
    connect(d->reply, &QNetworkReply::metaDataChanged, this, read);
    connect(d->reply, &QNetworkReply::readyRead, this, read);
}

void ImageDownloader::takeOver(ImageDownloader *earlier)
{
    if (d->manager || !std::exchange(earlier->d->hasGoodManager, false))
        return;
    d->manager = std::move(earlier->d->manager);
    d->manager->disconnect(earlier);
}

void ImageDownloader::stop()
{
    d->finished = true;
    if (QNetworkReply *reply = std::exchange(d->reply, nullptr)) {
        d->manager->disconnect(this);
        reply->disconnect(this);
        delete reply;
    }
}

void ImageDownloader::refuse()
{
    QMetaObject::invokeMethod(
        this, [this] { d->finish(-1); }, Qt::QueuedConnection);
}

void ImageDownloader::giveUp()
{
    if (d->reply)
        d->reply->abort();
}

qint64 ImageDownloader::idleTime() const
{
    return d->active.isValid() ? d->active.elapsed() : 0;
}

qint64 ImageDownloader::runningTime() const
{
    return d->started.isValid() ? d->started.elapsed() : 0;
}

void ImageDownloader::slotFinishDownload(QNetworkReply *reply)
{
    d->reply = nullptr;
    reply->deleteLater();
    if (d->finished)
        return;
    const bool isComplete = reply->error() == QNetworkReply::NoError;
    if (isComplete)
        d->body += reply->readAll();
    if (!isComplete || d->body.size() > maxBytes) {
        d->finish(-1);
        return;
    }
    replaceOwnFile(d->filePath, d->body);
    d->hasGoodManager = d->manager && reply->manager() == d->manager.get();
    d->finish(0);
}
