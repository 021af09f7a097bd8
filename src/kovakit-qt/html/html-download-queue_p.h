// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>

class ImageDownloader;

// Lets a number of downloads run at once and the others wait. Owns none of them: whoever deletes
// one takes it off first.
class HtmlDownloadQueue : public QObject
{
    Q_OBJECT

public:
    // Runs up to @p maxRunning downloads at once.
    explicit HtmlDownloadQueue(int maxRunning);

    // Adds @p jobs in their order, in front of those that wait, and starts what may start.
    void add(const QVector<ImageDownloader *> &jobs);

    // Takes @p job, which has ended or is given up, off the queue. If it ended well, the next one
    // that starts goes on with its connection.
    void remove(ImageDownloader *job);

private:
    void startWaiting();
    void endStalled();

    const int m_maxRunning;
    // The next one last.
    QVector<ImageDownloader *> m_waiting;
    QVector<ImageDownloader *> m_running;
    QTimer m_watch;
};
