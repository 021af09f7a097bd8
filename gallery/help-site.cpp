// SPDX-License-Identifier: MIT

#include "help-site.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QLinearGradient>
#include <QPainter>
#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr int slowMilliseconds = 2000;

QByteArray png(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray folderPicture()
{
    QImage image(140, 90, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x12, 0x5E, 0x95));
    painter.drawRoundedRect(8, 6, 50, 24, 6, 6);
    painter.setBrush(QColor(0x16, 0x70, 0xB0));
    painter.drawRoundedRect(8, 16, 124, 68, 6, 6);
    painter.setBrush(QColor(0xD6, 0xE8, 0xF6));
    painter.drawRoundedRect(20, 34, 100, 8, 4, 4);
    painter.drawRoundedRect(20, 50, 70, 8, 4, 4);
    return png(image);
}

QByteArray chartPicture()
{
    QImage image(320, 110, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(0xF4, 0xF7, 0xFA));
    QPainter painter(&image);
    const int heights[] = {20, 34, 28, 52, 60, 48, 74, 88};
    int x = 16;
    for (const int height : heights) {
        painter.fillRect(x, 100 - height, 24, height, QColor(0x16, 0x70, 0xB0));
        x += 37;
    }
    painter.fillRect(8, 100, 304, 2, QColor(0x7D, 0x8E, 0x9E));
    return png(image);
}

QByteArray article(const QString &language, const QString &base, const QString &note,
                   const QString &pictures)
{
    QFile file(QStringLiteral(":/gallery/help/%1.html").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    QString text = QString::fromUtf8(file.readAll());
    text.replace(QLatin1String("@BASE@"), base);
    text.replace(QLatin1String("@NOTE@"), note);
    text.replace(QLatin1String("@PICTURES@"), pictures);
    return text.toUtf8();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
}

bool isGerman(const QString &language)
{
    return language == QLatin1String("ger");
}

} // namespace

HelpSite::HelpSite()
{
    for (const QString &language : {QStringLiteral("enu"), QStringLiteral("ger")}) {
        const QString folder = m_folder.filePath(language);
        QDir().mkpath(folder + QLatin1String("/pictures"));
        const QString note = isGerman(language)
                               ? QStringLiteral("<i>Dies ist die Seite aus der Offline-Hilfe.</i> "
                                                "<a href=\"restore.html\">Wiederherstellen</a>")
                               : QStringLiteral("<i>This is the page of the offline help.</i> "
                                                "<a href=\"restore.html\">Restore a folder</a>");
        write(folder + QLatin1String("/backup.html"),
              article(language, QString(), note, QStringLiteral("pictures/")));
        write(folder + QLatin1String("/restore.html"),
              article(language + QLatin1String("-restore"), QString(), QString(), QString()));
        write(folder + QLatin1String("/pictures/folder.png"), folderPicture());
        write(folder + QLatin1String("/pictures/chart.png"), chartPicture());
    }
    connect(&m_server, &QTcpServer::newConnection, this, &HelpSite::accept);
    setMode(Answers);
}

void HelpSite::setMode(Mode mode)
{
    m_mode = mode;
    if (mode == Gone || mode == Nothing)
        m_server.close();
    else if (!m_server.isListening() && m_server.listen(QHostAddress::LocalHost, m_port))
        m_port = m_server.serverPort();
}

QString HelpSite::address() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

QString HelpSite::offlinePage() const
{
    return m_mode == Nothing ? QStringLiteral("missing.html") : QStringLiteral("backup.html");
}

void HelpSite::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            if (m_mode == Slow)
                QTimer::singleShot(slowMilliseconds, socket, [this, socket] { answer(socket); });
            else if (m_mode != Silent)
                answer(socket);
        });
    }
}

void HelpSite::answer(QTcpSocket *socket)
{
    const QByteArray target = socket->readAll().split(' ').value(1);
    const QByteArray body = m_mode == NotFound ? QByteArray() : bodyOf(target);
    socket->write(body.isEmpty() ? "HTTP/1.1 404 Not Found\r\n" : "HTTP/1.1 200 OK\r\n");
    socket->write("Connection: close\r\nContent-Length: " + QByteArray::number(body.size())
                  + "\r\n\r\n" + body);
    socket->disconnectFromHost();
}

QByteArray HelpSite::bodyOf(const QByteArray &target) const
{
    if (target.endsWith("/folder.png"))
        return folderPicture();
    if (target.endsWith("/chart.png"))
        return chartPicture();
    if (!target.startsWith("/cgi/knowledgebase/"))
        return QByteArray();
    const QString language =
        target.contains("lang=ger") ? QStringLiteral("ger") : QStringLiteral("enu");
    const QString note = isGerman(language)
                           ? QStringLiteral("<i>Dies ist der Artikel vom Server.</i>")
                           : QStringLiteral("<i>This is the article from the server.</i>");
    return article(language, QStringLiteral("<base href=\"%1/pages/\">").arg(address()), note,
                   QStringLiteral("../image/"));
}
