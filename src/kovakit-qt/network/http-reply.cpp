// SPDX-License-Identifier: MIT

#include "http-reply_p.h"

#include "kept-connection_p.h"

#include <QLocale>
#include <QPointer>
#include <QSslConfiguration>
#include <QSslSocket>

#include <algorithm>
#include <utility>

namespace {

constexpr int readStep = 64 * 1024;
constexpr int httpPort = 80;
constexpr int httpsPort = 443;

QNetworkReply::NetworkError errorOfStatus(int status)
{
    switch (status) {
    case 401:
        return QNetworkReply::AuthenticationRequiredError;
    case 403:
        return QNetworkReply::ContentAccessDenied;
    case 404:
        return QNetworkReply::ContentNotFoundError;
    case 407:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    case 410:
        return QNetworkReply::ContentGoneError;
    case 500:
        return QNetworkReply::InternalServerError;
    case 503:
        return QNetworkReply::ServiceUnavailableError;
    default:
        return status > 500 ? QNetworkReply::UnknownServerError
                            : QNetworkReply::UnknownContentError;
    }
}

QNetworkReply::NetworkError errorOfSocket(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return QNetworkReply::ConnectionRefusedError;
    case QAbstractSocket::RemoteHostClosedError:
        return QNetworkReply::RemoteHostClosedError;
    case QAbstractSocket::HostNotFoundError:
        return QNetworkReply::HostNotFoundError;
    case QAbstractSocket::SocketTimeoutError:
        return QNetworkReply::TimeoutError;
    case QAbstractSocket::SslHandshakeFailedError:
        return QNetworkReply::SslHandshakeFailedError;
    case QAbstractSocket::ProxyAuthenticationRequiredError:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    case QAbstractSocket::ProxyConnectionRefusedError:
        return QNetworkReply::ProxyConnectionRefusedError;
    case QAbstractSocket::ProxyNotFoundError:
        return QNetworkReply::ProxyNotFoundError;
    default:
        return QNetworkReply::UnknownNetworkError;
    }
}

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

QByteArray basicCredentials(const QString &user, const QString &password)
{
    return "Basic " + (user + QLatin1Char(':') + password).toUtf8().toBase64();
}

QByteArray wantedLanguages()
{
    const QLocale system = QLocale::system();
    if (system.language() == QLocale::C)
        return "en,*";
    const QByteArray name = system.bcp47Name().toLatin1();
    return name + (system.language() == QLocale::English ? ",*" : ",en,*");
}

} // namespace

HttpReply::HttpReply(const QNetworkRequest &request, QNetworkAccessManager *manager,
                     KeptConnection *kept)
    : QNetworkReply(manager)
    , m_manager(manager)
    , m_kept(kept)
{
    setRequest(request);
    setUrl(request.url());
    setOperation(QNetworkAccessManager::GetOperation);
    open(ReadOnly | Unbuffered);
    QMetaObject::invokeMethod(this, &HttpReply::start, Qt::QueuedConnection);
}

HttpReply::~HttpReply()
{
    if (m_socket)
        drop(std::move(m_socket));
}

void HttpReply::abort()
{
    finish(OperationCanceledError, QStringLiteral("Operation canceled"));
}

void HttpReply::ignoreSslErrors()
{
    m_ignoresSslErrors = true;
}

qint64 HttpReply::bytesAvailable() const
{
    return QNetworkReply::bytesAvailable() + m_content.size() - m_contentAt;
}

qint64 HttpReply::readData(char *data, qint64 maxSize)
{
    const qint64 count = qMin<qint64>(maxSize, m_content.size() - m_contentAt);
    if (count == 0)
        return isFinished() ? -1 : 0;
    std::copy_n(m_content.constData() + m_contentAt, count, data);
    m_contentAt += int(count);
    if (m_contentAt == m_content.size()) {
        m_content.clear();
        m_contentAt = 0;
    }
    readLater();
    return count;
}

void HttpReply::start()
{
    if (isFinished())
        return;
    if (url().host().isEmpty())
        finish(ProtocolInvalidOperationError, QStringLiteral("No host"));
    else if (!chooseProxy())
        finish(ProxyNotFoundError, QStringLiteral("No suitable proxy found"));
    else
        connectSocket();
}

// The first that can do it: a proxy that is asked for the whole address, only without encryption,
// or one that passes everything on.
bool HttpReply::chooseProxy()
{
    const QList<QNetworkProxy> proxies =
        m_manager->proxy().type() == QNetworkProxy::DefaultProxy
            ? QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(url()))
            : QList<QNetworkProxy>{m_manager->proxy()};
    for (const QNetworkProxy &proxy : proxies) {
        const bool isHttp = proxy.type() == QNetworkProxy::HttpProxy
                         || proxy.type() == QNetworkProxy::HttpCachingProxy;
        if (isHttp && !isEncrypted() && proxy.isCachingProxy()) {
            m_askedProxy = proxy;
            return true;
        }
        if (proxy.isTransparentProxy()) {
            m_proxy = proxy;
            return true;
        }
    }
    return false;
}

void HttpReply::connectSocket()
{
    m_socket = m_isReused ? nullptr : m_kept->take(connectionKey());
    m_isReused = m_socket != nullptr;
    if (!m_socket)
        m_socket = newSocket();
    QTcpSocket *socket = m_socket.get();
    connect(socket, &QIODevice::readyRead, this, &HttpReply::readLater);
    connect(socket, &QAbstractSocket::disconnected, this, &HttpReply::readLater);
    connect(socket, &QAbstractSocket::errorOccurred, this, &HttpReply::noteSocketError);
    if (m_isReused) {
        send();
        return;
    }
    // What is beyond stays with the server.
    socket->setReadBufferSize(readStep);
    socket->setProxy(m_proxy);
    if (m_askedProxy.type() != QNetworkProxy::NoProxy)
        socket->connectToHost(m_askedProxy.hostName(), m_askedProxy.port());
    else if (auto *encrypted = qobject_cast<QSslSocket *>(socket))
        encrypted->connectToHostEncrypted(url().host(), quint16(url().port(httpsPort)));
    else
        socket->connectToHost(url().host(), quint16(url().port(httpPort)));
}

std::unique_ptr<QTcpSocket> HttpReply::newSocket()
{
    if (!isEncrypted()) {
        auto socket = std::make_unique<QTcpSocket>();
        connect(socket.get(), &QAbstractSocket::connected, this, &HttpReply::send);
        return socket;
    }
    auto socket = std::make_unique<QSslSocket>();
    socket->setSslConfiguration(request().sslConfiguration());
    connect(socket.get(), &QSslSocket::encrypted, this, &HttpReply::send);
    connect(socket.get(), QOverload<const QList<QSslError> &>::of(&QSslSocket::sslErrors), this,
            &HttpReply::checkPeer);
    return socket;
}

void HttpReply::send()
{
    m_socket->write(head());
}

QByteArray HttpReply::head() const
{
    const QUrl address = url();
    const bool isAsked = m_askedProxy.type() != QNetworkProxy::NoProxy;
    QUrl target = address.adjusted(QUrl::NormalizePathSegments);
    if (target.path().isEmpty())
        target.setPath(QStringLiteral("/"));
    const QUrl::FormattingOptions left =
        isAsked ? QUrl::RemoveUserInfo | QUrl::RemoveFragment
                : QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment;
    QByteArray host = address.host(QUrl::FullyEncoded).toLatin1();
    if (host.contains(':'))
        host = '[' + host + ']';
    if (address.port() >= 0)
        host += ':' + QByteArray::number(address.port());

    QByteArray text = "GET " + target.toEncoded(left) + " HTTP/1.1\r\nHost: " + host + "\r\n";
    const auto add = [&text](const QByteArray &name, const QByteArray &value) {
        text += name + ": " + value + "\r\n";
    };
    if (!address.userName().isEmpty())
        add("Authorization", basicCredentials(address.userName(), address.password()));
    if (isAsked && !m_askedProxy.user().isEmpty())
        add("Proxy-Authorization", basicCredentials(m_askedProxy.user(), m_askedProxy.password()));
    add("Accept-Language", wantedLanguages());
    add("User-Agent", "Mozilla/5.0");
    for (const QByteArray &name : request().rawHeaderList())
        add(name, request().rawHeader(name));
    return text + "\r\n";
}

QString HttpReply::connectionKey() const
{
    const QNetworkProxy &proxy =
        m_askedProxy.type() == QNetworkProxy::NoProxy ? m_proxy : m_askedProxy;
    return url().adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment).toString()
         + QLatin1Char(' ') + QString::number(proxy.type()) + proxy.user() + QLatin1Char('@')
         + proxy.hostName() + QLatin1Char(':') + QString::number(proxy.port());
}

bool HttpReply::isEncrypted() const
{
    return url().scheme() == QLatin1String("https");
}

bool HttpReply::isFull() const
{
    return readBufferSize() > 0 && m_content.size() - m_contentAt >= readBufferSize();
}

void HttpReply::readLater()
{
    if (m_isReadingLater || !m_socket)
        return;
    m_isReadingLater = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isReadingLater = false;
            read();
        },
        Qt::QueuedConnection);
}

// One step for each turn of the event loop, so that no server keeps the program busy; and not
// within the socket's signals, so that whoever hears of it may delete the reply.
void HttpReply::read()
{
    if (!m_socket || isFull())
        return;
    const QByteArray bytes = m_socket->read(readStep);
    if (bytes.isEmpty()) {
        if (m_socket->state() == QAbstractSocket::UnconnectedState)
            handleClosed();
        return;
    }
    readLater();
    take(bytes);
}

void HttpReply::take(const QByteArray &bytes)
{
    const QPointer<HttpReply> self(this);
    m_response.add(bytes);
    if (m_response.hasHead() && !m_hasTakenHead)
        takeHead();
    if (!self || isFinished())
        return;
    const QByteArray content = m_response.takeContent();
    m_content.remove(0, std::exchange(m_contentAt, 0));
    m_content += content;
    if (!content.isEmpty())
        Q_EMIT readyRead();
    if (!self || isFinished())
        return;
    if (m_response.isFailed())
        finish(ProtocolFailure, QStringLiteral("No HTTP response, or one beyond its limits"));
    else if (m_response.isComplete())
        finish(NoError, QString());
}

void HttpReply::takeHead()
{
    m_hasTakenHead = true;
    const int status = m_response.status();
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, status);
    setAttribute(QNetworkRequest::HttpReasonPhraseAttribute, m_response.reason());
    for (const HttpResponse::Field &field : m_response.fields()) {
        const bool isMore = hasRawHeader(field.first);
        setRawHeader(field.first,
                     isMore ? rawHeader(field.first) + ", " + field.second : field.second);
    }
    if (isRedirect(status) && hasRawHeader("Location"))
        setAttribute(QNetworkRequest::RedirectionTargetAttribute,
                     QUrl::fromEncoded(rawHeader("Location")));
    const QPointer<HttpReply> self(this);
    Q_EMIT metaDataChanged();
    if (self && !isFinished() && status >= 400)
        finish(errorOfStatus(status), QString::fromLatin1(m_response.reason()));
}

void HttpReply::checkPeer(const QList<QSslError> &errors)
{
    const QPointer<HttpReply> self(this);
    m_isInSocketSignal = true;
    Q_EMIT sslErrors(errors);
    if (self && !isFinished())
        Q_EMIT m_manager->sslErrors(this, errors);
    if (!self)
        return;
    m_isInSocketSignal = false;
    if (m_socket && m_ignoresSslErrors)
        static_cast<QSslSocket *>(m_socket.get())->ignoreSslErrors();
}

void HttpReply::noteSocketError(QAbstractSocket::SocketError error)
{
    if (m_socketError == QAbstractSocket::UnknownSocketError)
        m_socketError = error;
    readLater();
}

void HttpReply::handleClosed()
{
    // A server may give up a connection that it has kept open, while it is used again.
    if (m_isReused && m_response.isUntouched()) {
        drop(std::move(m_socket));
        m_socketError = QAbstractSocket::UnknownSocketError;
        connectSocket();
        return;
    }
    const bool isHungUp = m_socketError == QAbstractSocket::RemoteHostClosedError
                       || m_socketError == QAbstractSocket::UnknownSocketError;
    m_response.end();
    if (isHungUp && m_response.isComplete())
        finish(NoError, QString());
    else
        finish(isHungUp ? RemoteHostClosedError : errorOfSocket(m_socketError),
               m_socket->errorString());
}

// Nobody hears of it; the socket may be in the middle of a signal.
void HttpReply::drop(std::unique_ptr<QTcpSocket> socket)
{
    socket->disconnect(this);
    socket->abort();
    if (m_isInSocketSignal)
        socket.release()->deleteLater();
}

void HttpReply::finish(NetworkError code, const QString &text)
{
    if (isFinished())
        return;
    if (m_socket && code == NoError && m_response.isPersistent()) {
        m_socket->disconnect(this);
        m_kept->keep(connectionKey(), std::move(m_socket));
    } else if (m_socket) {
        drop(std::move(m_socket));
    }
    setFinished(true);
    if (code != NoError) {
        setError(code, text);
        const QPointer<HttpReply> self(this);
        Q_EMIT errorOccurred(code);
        if (!self)
            return;
    }
    Q_EMIT finished();
}
