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
    HtmlDownloadQueue();

    // Adds @p jobs in their order, in front of those that wait, and starts what may start.
    void add(const QVector<ImageDownloader *> &jobs);
    void take(ImageDownloader *job);

private:
    void startWaiting();
    void endStalled();

    // The next one last.
    QVector<ImageDownloader *> m_waiting;
    QVector<ImageDownloader *> m_running;
    QTimer m_watch;
};
