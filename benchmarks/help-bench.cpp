// SPDX-License-Identifier: MIT

#include "bench.h"

#include <kovakit-qt/widgets/help-window.h>
#include <kovakit-qt/widgets/html-text-browser.h>

#include <support/http-server.h>
#include <support/test-host.h>

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QTimer>

namespace {

const QSize pictureSize(40, 40);

QByteArray picture()
{
    QImage image(pictureSize, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QString pathOf(int index)
{
    return QStringLiteral("image/%1.png").arg(index);
}

QString page(int count, const QString &base)
{
    QString text = QStringLiteral("<html><base href=\"%1x/\">").arg(base);
    for (int i = 0; i < count; ++i)
        text += QStringLiteral("<p><img src=\"../%1\"></p>").arg(pathOf(i));
    return text;
}

// Lets events pass until @p done is true.
template<typename Condition>
void passEventsUntil(const Condition &done)
{
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    poll.start(1);
    loop.exec();
}

class PictureServer : public HttpServer
{
public:
    explicit PictureServer(int count)
    {
        const QByteArray bytes = picture();
        for (int i = 0; i < count; ++i)
            answer(QLatin1Char('/') + pathOf(i), bytes);
    }
};

// A new folder for temporary files: what an earlier round has fetched would show at once, and a
// file system takes long to make files where others have just been deleted.
QString makeFolder()
{
    QTemporaryDir folder(scratchFolder() + QLatin1String("/round"));
    folder.setAutoRemove(false);
    qputenv("TMPDIR", QFile::encodeName(folder.path()));
    return folder.path();
}

double showWithBrowser(int count)
{
    makeFolder();
    PictureServer server(count);
    HtmlTextBrowser browser(nullptr);
    browser.resize(600, 400);
    browser.show();
    const Stopwatch watch;
    browser.setText(page(count, server.base()));
    passEventsUntil([&] {
        for (int i = count - 1; i >= 0; --i) {
            const QUrl name(QLatin1String("../") + pathOf(i));
            if (browser.document()
                    ->resource(QTextDocument::ImageResource, name)
                    .value<QPixmap>()
                    .size()
                != pictureSize)
                return false;
        }
        return true;
    });
    browser.grab();
    return watch.milliseconds();
}

// The same files through one manager, and one layout when all of them are there. They are stored as
// well: on a busy disk that takes longer than to fetch them.
double fetchWithOneManager(int count)
{
    const QString folder = makeFolder();
    PictureServer server(count);
    QTextBrowser browser;
    browser.resize(600, 400);
    browser.show();
    const Stopwatch watch;
    QNetworkAccessManager manager;
    int arrived = 0;
    for (int i = 0; i < count; ++i) {
        QNetworkReply *reply = manager.get(QNetworkRequest(QUrl(server.base() + pathOf(i))));
        QObject::connect(reply, &QNetworkReply::finished, &browser, [&, reply, i] {
            const QByteArray bytes = reply->readAll();
            QFile file(QStringLiteral("%1/%2.png").arg(folder).arg(i));
            file.open(QIODevice::WriteOnly);
            file.write(bytes);
            file.close();
            QPixmap pixmap;
            pixmap.loadFromData(bytes);
            browser.document()->addResource(QTextDocument::ImageResource,
                                            QUrl(QLatin1String("../") + pathOf(i)), pixmap);
            reply->deleteLater();
            ++arrived;
        });
    }
    passEventsUntil([&] { return arrived == count; });
    browser.setText(page(count, server.base()));
    browser.grab();
    return watch.milliseconds();
}

double openOfflinePage()
{
    HelpContext context;
    context.lang = QStringLiteral("enu");
    context.offlineHelpDir = scratchFolder();
    context.link = QStringLiteral("offline.html");
    HelpWindow::setKnowledgeBaseHost(QStringLiteral("help.invalid"));
    const Stopwatch watch;
    HelpWindow window(context, nullptr);
    window.resize(500, 400);
    window.show();
    const auto *browser = window.findChild<HtmlTextBrowser *>();
    passEventsUntil([browser] { return !browser->toPlainText().isEmpty(); });
    window.grab();
    return watch.milliseconds();
}

void help(Bench &bench)
{
    writeScratchFile(QStringLiteral("enu/offline.html"), "<p>offline</p>");
    bench.compare(
        {"help/page-of-10-pictures", "ms", 0}, [] { return showWithBrowser(10); },
        [] { return fetchWithOneManager(10); });
    bench.compare(
        {"help/page-of-100-pictures", "ms", 2.0}, [] { return showWithBrowser(100); },
        [] { return fetchWithOneManager(100); });
    bench.compare(
        {"help/page-of-400-pictures", "ms", 2.0}, [] { return showWithBrowser(400); },
        [] { return fetchWithOneManager(400); });
    bench.compare(
        {"help/picture-of-400-to-of-100", "ms each", 1.25},
        [] { return showWithBrowser(400) / 400; }, [] { return showWithBrowser(100) / 100; });
    bench.measure({"help/offline-page", "ms", 100}, openOfflinePage);
}

const BenchTopic topic(help);

} // namespace
