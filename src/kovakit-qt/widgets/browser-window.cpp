// SPDX-License-Identifier: MIT

#include "browser-window.h"

#include "page-frame_p.h"

#include "kovakit-qt/accessibility/window-accessible_p.h"
#include "kovakit-qt/network/plain-access-manager_p.h"

#include <kovakit-qt/style/style-manager.h>

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QTimer>

namespace {

constexpr int queryTimeout = 10000;

bool isTooLong(const QNetworkReply *reply)
{
    const qint64 announced = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    return qMax(announced, reply->bytesAvailable()) > BrowserWindow::maxPageBytes;
}

// Where the parent of @p window has a style sheet, scroll bars made before that of the window would
// never wear it.
HtmlTextBrowser *makeBrowser(BrowserWindow *window)
{
    window->setStyleSheet(getStyleSheet("component.scrollbar", false));
    return new HtmlTextBrowser(window);
}

} // namespace

class BrowserWindow::Private
{
public:
    Private(BrowserWindow *window, HtmlTextBrowser *browser)
        : frame(window, browser)
    {
    }

    PageFrame frame;
    std::unique_ptr<QNetworkAccessManager> manager;
    std::unique_ptr<QTimer> timer;
    int running = 0;
};

BrowserWindow::BrowserWindow(QWidget *parent)
    : QDialog(parent)
    , m_browser(makeBrowser(this))
    , d(std::make_unique<Private>(this, m_browser))
{
    installWindowAccessibility<BrowserWindow>();
    m_browser->setOpenExternalLinks(true);
    m_browser->setSource(HtmlTextBrowser::textSource());
    // A link leads to another page with a title of its own.
    connect(m_browser, &QTextBrowser::sourceChanged, this,
            [this] { m_browser->setAccessibleName(m_browser->documentTitle()); });
    connect(&d->frame, &PageFrame::retried, this, [this] { reload(); });
    init();
    setWindowModality(Qt::ApplicationModal);
    m_browser->setFocus();
}

BrowserWindow::~BrowserWindow()
{
    d->manager->disconnect(this);
}

void BrowserWindow::init()
{
    d->manager = std::make_unique<PlainAccessManager>();
    m_manager = d->manager.get();
    connect(m_manager, &QNetworkAccessManager::finished, this, &BrowserWindow::slotReceiveReply);
    d->timer = std::make_unique<QTimer>();
    m_timer = d->timer.get();
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &BrowserWindow::slotQueryTimeout);
}

void BrowserWindow::query()
{
    m_timer->start(queryTimeout);
    QNetworkReply *reply = m_manager->get(QNetworkRequest(m_url));
    connect(this, &BrowserWindow::sigAbortRequest, reply, &QNetworkReply::abort);
    const auto guardSize = [reply] {
        if (isTooLong(reply))
            reply->abort();
    };
    connect(reply, &QNetworkReply::metaDataChanged, reply, guardSize);
    connect(reply, &QNetworkReply::readyRead, reply, guardSize);
    ++d->running;
    d->frame.setLoading(true);
}

void BrowserWindow::reload()
{
    m_timer->stop();
    m_timer->setInterval(0);
    query();
}

void BrowserWindow::reload(const QUrl &url)
{
    m_url = url;
    reload();
}

void BrowserWindow::fallbackOffline() { }

void BrowserWindow::slotReceiveReply(QNetworkReply *reply)
{
    m_timer->stop();
    reply->deleteLater();
    d->running = qMax(0, d->running - 1);
    d->frame.setLoading(d->running > 0);
    if (!isAnswer(reply) || isTooLong(reply)) {
        const QPointer<BrowserWindow> guard(this);
        d->frame.beginFallback();
        fallbackOffline();
        if (guard)
            d->frame.endFallback();
        return;
    }
    // Reading takes as long as the square of the number of pieces in which the page has come.
    const QByteArray body = reply->peek(maxPageBytes);
    // Up to the first NUL byte.
    showPage(QString::fromUtf8(body.constData()));
}

void BrowserWindow::slotQueryTimeout()
{
    Q_EMIT sigAbortRequest();
}

void BrowserWindow::showPage(const QString &text)
{
    m_browser->setText(text);
    m_browser->setAccessibleName(m_browser->documentTitle());
}
