// SPDX-License-Identifier: MIT

#include "html-download-queue_p.h"

#include <kovakit-qt/network/image-downloader.h>

#include <algorithm>

namespace {

constexpr int watchInterval = 1000;
constexpr qint64 longestSilence = 60000;
// While others wait.
constexpr qint64 shortSilence = 10000;
constexpr qint64 longestDownload = 60000;

} // namespace

HtmlDownloadQueue::HtmlDownloadQueue(int maxRunning)
    : m_maxRunning(maxRunning)
{
    m_watch.setInterval(watchInterval);
    connect(&m_watch, &QTimer::timeout, this, &HtmlDownloadQueue::endStalled);
}

void HtmlDownloadQueue::add(const QVector<ImageDownloader *> &jobs)
{
    m_waiting.reserve(m_waiting.size() + jobs.size());
    std::copy(jobs.rbegin(), jobs.rend(), std::back_inserter(m_waiting));
    startWaiting();
}

void HtmlDownloadQueue::remove(ImageDownloader *job)
{
    if (!m_running.removeOne(job))
        m_waiting.removeOne(job);
    if (!m_waiting.isEmpty())
        m_waiting.last()->takeOver(job);
    startWaiting();
}

void HtmlDownloadQueue::startWaiting()
{
    while (!m_waiting.isEmpty() && m_running.size() < m_maxRunning) {
        m_running.append(m_waiting.takeLast());
        m_running.last()->start();
    }
    if (m_running.isEmpty())
        m_watch.stop();
    else if (!m_watch.isActive())
        m_watch.start();
}

void HtmlDownloadQueue::endStalled()
{
    // Each one that is given up leaves the list.
    const QVector<ImageDownloader *> running = m_running;
    for (ImageDownloader *job : running) {
        const bool isAwaited = !m_waiting.isEmpty();
        if (job->idleTime() > (isAwaited ? shortSilence : longestSilence)
            || (isAwaited && job->runningTime() > longestDownload))
            job->giveUp();
    }
}
