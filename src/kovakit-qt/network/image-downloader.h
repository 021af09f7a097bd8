// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QObject>
#include <QString>

#include <memory>

class QNetworkReply;

/**
 * One download of a picture from an address into a file.
 *
 * HtmlTextBrowser makes one for each picture of its text. The file is replaced in one step when
 * all of the picture has arrived, and only in a folder that belongs to this user: below the
 * system's temporary folder no folder on the way may be another user's or a symbolic link. The
 * folder must exist. GUI thread only.
 */
class KOVAKIT_EXPORT ImageDownloader : public QObject
{
    Q_OBJECT

public:
    /** The largest picture in bytes, 32 MiB; a longer answer counts as a network error. */
    static constexpr qint64 maxBytes = qint64(32) * 1024 * 1024;

    /**
     * A download of @p address into the file @p path that has not begun; @p parent owns it.
     *
     * The address is read in Qt's tolerant mode.
     */
    ImageDownloader(const QString &path, const QString &address, QObject *parent);

    /** Stops a running download, see stop(). */
    ~ImageDownloader() override;

    /**
     * Sends the request. It has no headers of its own and no time-out; the application's proxy
     * settings hold for it. Nothing is unpacked: a picture that the server compresses, though it is
     * asked not to, is written as it comes. Only the first call has an effect.
     *
     * Redirects are not followed. The address of a pipe or a device counts as a network error, and
     * so does an answer with more than 64 KiB around its content: status line, headers, answers
     * such as "100 Continue", extensions of chunks and trailers, all together.
     *
     * Nothing runs in a thread: stop() and deleting the download close the connection at once,
     * whatever the server does, and leave nothing behind.
     */
    void start();

    /** Whether the download has ended, well or not. */
    [[nodiscard]] bool isFinished() const;

    /** The file that the picture is written to, as it was given. */
    [[nodiscard]] QString path() const;

    /**
     * Goes on with the connection of @p earlier, if that has ended well and the server has kept it
     * open. Has an effect only before start().
     */
    void takeOver(ImageDownloader *earlier);

    /** Ends the download for good: nothing is written and nothing emitted from here on. */
    void stop();

    /** Ends the download as a network error instead of starting it: -1 follows from the event loop.
     */
    void refuse();

    /** Ends a running download as a network error: sigDownloadFinish() follows with -1. */
    void giveUp();

    /** Milliseconds since bytes last arrived, or since start(); 0 before it. */
    [[nodiscard]] qint64 idleTime() const;

    /** Milliseconds since start(); 0 before it. */
    [[nodiscard]] qint64 runningTime() const;

public Q_SLOTS:
    /** Ends the download with @p reply: writes the file unless it is an error, and emits. */
    void slotFinishDownload(QNetworkReply *reply);

Q_SIGNALS:
    /**
     * The download from @p url has ended; fired once, from the event loop.
     *
     * @p result is 0 for an answer without error and -1 for a network error, which includes an
     * HTTP error status. A file that could not be written also gives 0.
     */
    void sigDownloadFinish(QString url, int result);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
