// SPDX-License-Identifier: MIT

#include "browser-window.h"

#include "kovakit-qt/network/plain-access-manager_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QEvent>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int queryTimeout = 10000;
constexpr double designBusyHeight = 3;

bool isTooLong(const QNetworkReply *reply)
{
    const qint64 announced = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    return qMax(announced, reply->bytesAvailable()) > BrowserWindow::maxPageBytes;
}

} // namespace

class BrowserWindow::Private
{
public:
    explicit Private(HtmlTextBrowser *browser)
        : busy(new QProgressBar(browser))
    {
        busy->setObjectName(QStringLiteral("busyBar"));
        busy->setRange(0, 0);
        busy->setTextVisible(false);
        busy->setFixedHeight(qMax(1, kovaPx(designBusyHeight)));
        busy->setStyleSheet(getStyleSheet("component.help_busy", false));
        busy->hide();
    }

    void placeBusyBar()
    {
        busy->setGeometry(0, 0, busy->parentWidget()->width(), busy->height());
        busy->raise();
    }

    std::unique_ptr<QNetworkAccessManager> manager;
    std::unique_ptr<QTimer> timer;
    QProgressBar *const busy;
    int running = 0;
};

BrowserWindow::BrowserWindow(QWidget *parent)
    : QDialog(parent)
    , m_browser(new HtmlTextBrowser(this))
    , d(std::make_unique<Private>(m_browser))
{
    m_browser->setOpenExternalLinks(true);
    // A link leads to another page with a title of its own.
    connect(m_browser, &QTextBrowser::sourceChanged, this,
            [this] { m_browser->setAccessibleName(m_browser->documentTitle()); });
    init();
    auto *box = new QVBoxLayout(this);
    box->addWidget(m_browser);
    setWindowModality(Qt::ApplicationModal);
    setStyleSheet(getStyleSheet("component.scrollbar", false));

    m_browser->installEventFilter(this);
    m_browser->setFocus();
}

BrowserWindow::~BrowserWindow()
{
    d->manager->disconnect(this);
    m_browser->removeEventFilter(this);
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
    d->placeBusyBar();
    d->busy->show();
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
    d->busy->setVisible(d->running > 0);
    if (!isAnswer(reply) || isTooLong(reply)) {
        fallbackOffline();
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

bool BrowserWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_browser && event->type() == QEvent::Resize)
        d->placeBusyBar();
    return QDialog::eventFilter(watched, event);
}
