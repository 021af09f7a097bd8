// SPDX-License-Identifier: MIT

#include "html-text-browser.h"

#include "kovakit-qt/html/html-download-queue_p.h"
#include "kovakit-qt/html/html-limits_p.h"
#include "kovakit-qt/html/html-link-guard_p.h"
#include "kovakit-qt/html/html-page-check_p.h"
#include "kovakit-qt/html/html-pictures_p.h"
#include "kovakit-qt/html/html-reading-place_p.h"
#include "kovakit-qt/html/html-scan_p.h"
#include "kovakit-qt/utils/keys_p.h"
#include "kovakit-qt/utils/safe-file_p.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QFileInfo>
#include <QHelpEvent>
#include <QMap>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QTimer>

#include <optional>

namespace {

constexpr int gatherInterval = 40;

constexpr HtmlLimits textLimits = {
    HtmlTextBrowser::maxTextLength,
    HtmlTextBrowser::maxWordLength,
    HtmlTextBrowser::maxOpenElements,
    HtmlTextBrowser::maxLayoutSteps,
};
constexpr HtmlPictureLimits pictureLimits = {
    ImageDownloader::maxBytes,
    HtmlTextBrowser::maxPicturePixels,
    HtmlTextBrowser::maxPagePixels,
    HtmlTextBrowser::maxPictureSteps,
    HtmlTextBrowser::maxPagePictureSteps,
};

// Where downloaded pictures lie: the folder that all programs of this user share, or one of this
// process where another user has taken the name.
QString pictureFolder()
{
    const QLatin1String name("/image");
    const QString shared = QDir::tempPath() + QLatin1String("/kovaline_help") + name;
    if (makeOwnFolder(shared))
        return shared;
    static const QTemporaryDir own(QDir::tempPath() + QLatin1String("/kovaline_help-XXXXXX"));
    const QString path = own.path() + name;
    return makeOwnFolder(path) ? path : shared;
}

bool isRemote(const QString &address)
{
    const QString scheme = QUrl(address, QUrl::TolerantMode).scheme();
    return scheme == QLatin1String("http") || scheme == QLatin1String("https");
}

// The name by which the laid out text asks for the picture with @p source.
QUrl nameInText(QString source)
{
    return QUrl(source.replace(QLatin1String("&amp;"), QLatin1String("&")));
}

// The Markdown of a plain text, in which no sign means anything any more.
QString asCodeBlock(QString text)
{
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return QStringLiteral("    ") + text.replace(QLatin1Char('\n'), QLatin1String("\n    "));
}

} // namespace

class HtmlTextBrowser::Private
{
public:
    explicit Private(HtmlTextBrowser *browser)
        : q(browser)
    {
        gather.setSingleShot(true);
        connect(&gather, &QTimer::timeout, q, [this] { showPicturesAnew(); });
        connect(q, &QTextBrowser::sourceChanged, q, [this] {
            if (isTextDue)
                showText();
        });
    }

    [[nodiscard]] bool isTextShown() const;
    void showText();
    bool goBy(int step);
    void beginDownloads(const QString &text);
    ImageDownloader *newJob(const QString &file, const QString &address);
    void end(ImageDownloader *job);
    void showPicturesAnew();
    bool isWithinLimits(const QString &text, const QUrl &base, bool isMarkdown);
    HtmlPageCheck::Source source(const QUrl &base) const;
    QVariant page(const QUrl &name, bool isMarkdown);
    QVariant styleSheet(const QUrl &name);

    HtmlTextBrowser *const q;
    // What setText() shows, and whether it is rich and to be shown once the source has changed.
    QString pageText;
    QHash<QUrl, QByteArray> pageStyleSheets;
    bool isRich = false;
    bool isTextDue = false;
    bool isTextInHistory = false;
    int pageMargin = -1;
    HtmlLinkGuard links{q};
    QString pressedLink;
    QString baseUrl;
    // Each job is deleted later, whoever ends it: it may be in the middle of its signal.
    QMap<QString, ImageDownloader *> downloaders;
    HtmlPictures pictures{pictureLimits};
    HtmlDownloadQueue queue{maxDownloads};
    QTimer gather;
    QSet<QString> arrivedFiles;
    // Those of the text on show, as they were when it was checked.
    QHash<QUrl, QByteArray> styleSheets;
};

HtmlTextBrowser::HtmlTextBrowser(QWidget *parent)
    : QTextBrowser(parent)
    , d(std::make_unique<Private>(this))
{
}

HtmlTextBrowser::~HtmlTextBrowser()
{
    // Each job ends itself; there may be no event loop any more that would delete it later.
    for (ImageDownloader *job : std::exchange(d->downloaders, {})) {
        job->stop();
        job->deleteLater();
    }
}

void HtmlTextBrowser::setText(const QString &text)
{
    d->gather.stop();
    d->arrivedFiles.clear();
    d->pictures.clear(document());

    d->isRich = Qt::mightBeRichText(text) && d->isWithinLimits(text, QUrl(), false);
    d->pageText = d->isRich ? text : shownPlain(text, textLimits);
    d->pageStyleSheets = d->styleSheets;
    if (d->isRich)
        d->beginDownloads(text);
    d->isTextDue = true;
    if (!d->isTextInHistory) {
        d->showText();
        return;
    }
    QTextBrowser::setSource(textSource());
    clearHistory();
}

void HtmlTextBrowser::Private::showText()
{
    isTextDue = false;
    styleSheets = pageStyleSheets;
    if (!q->document()->baseUrl().isEmpty())
        q->document()->setBaseUrl(QUrl());
    if (isRich)
        q->QTextEdit::setHtml(pageText);
    else
        q->QTextEdit::setPlainText(pageText);
}

QUrl HtmlTextBrowser::textSource()
{
    // Links of the text are resolved against it: its path has to be empty.
    return QUrl(QStringLiteral("?"));
}

bool HtmlTextBrowser::Private::isTextShown() const
{
    return q->source().path().isEmpty();
}

int HtmlTextBrowser::pageMargin() const
{
    return d->pageMargin;
}

void HtmlTextBrowser::setPageMargin(int margin)
{
    d->pageMargin = margin;
    document()->setDocumentMargin(kovaPx(margin));
}

void HtmlTextBrowser::Private::beginDownloads(const QString &text)
{
    const HtmlPictureSources found = scanPictureSources(text);
    if (!found.hasBase)
        return;
    baseUrl = found.baseUrl;
    const QString folder = pictureFolder();
    q->setSearchPaths(QStringList(folder) + q->searchPaths());

    QVector<ImageDownloader *> jobs;
    for (const QString &source : found.sources) {
        const int nameAt = source.lastIndexOf(QLatin1Char('/')) + 1;
        const QString file = folder + QLatin1String("/../image/") + source.mid(nameAt);
        const QString address = baseUrl + source;
        if (nameAt == 0 || QStringView(source).left(nameAt) == QLatin1String("../image/"))
            pictures.addDownload(nameInText(source), file);

        if (ImageDownloader *earlier = downloaders.take(address))
            end(earlier);
        ImageDownloader *job = newJob(file, address);
        if (isRemote(address))
            jobs.append(job);
        else
            job->refuse();
    }
    queue.add(jobs);
}

ImageDownloader *HtmlTextBrowser::Private::newJob(const QString &file, const QString &address)
{
    auto *job = new ImageDownloader(file, address, nullptr);
    connect(job, &ImageDownloader::sigDownloadFinish, q, &HtmlTextBrowser::slotDownloadFinished);
    downloaders.insert(address, job);
    return job;
}

void HtmlTextBrowser::Private::end(ImageDownloader *job)
{
    job->stop();
    queue.remove(job);
    job->deleteLater();
}

void HtmlTextBrowser::slotDownloadFinished(QString url, int)
{
    if (ImageDownloader *job = d->downloaders.take(url)) {
        d->arrivedFiles.insert(QFileInfo(job->path()).fileName());
        d->end(job);
    }
    reload();
    // There is nothing left to wait for.
    if (d->downloaders.isEmpty())
        d->gather.start(0);
}

void HtmlTextBrowser::reload()
{
    if (!d->isTextShown() && d->arrivedFiles.isEmpty()) {
        QTextBrowser::reload();
        return;
    }
    if (d->arrivedFiles.isEmpty())
        d->arrivedFiles = d->pictures.fileNames();
    if (!d->gather.isActive())
        d->gather.start(gatherInterval);
}

void HtmlTextBrowser::Private::showPicturesAnew()
{
    QTextDocument *document = q->document();
    const QSet<QString> files = std::exchange(arrivedFiles, {});
    if (!pictures.refresh(document, files, q->searchPaths()))
        return;
    QScrollBar *across = q->horizontalScrollBar();
    QScrollBar *down = q->verticalScrollBar();
    const QPoint scrolled(across->value(), down->value());
    // At the top a reader has not begun to read.
    std::optional<HtmlReadingPlace> place;
    if (scrolled.y() > 0)
        place.emplace(document, QRect(scrolled, q->viewport()->size()));
    document->markContentsDirty(0, document->characterCount());
    // Lays out to the end, so that the scroll bars have their ranges again.
    document->documentLayout()->documentSize();
    across->setValue(scrolled.x());
    down->setValue(place ? scrolled.y() + qRound(place->shift()) : 0);
    q->viewport()->update();
}

qint64 HtmlTextBrowser::layoutSteps(const QString &text) const
{
    return HtmlPageCheck(textLimits, d->source(QUrl())).check(text).steps;
}

QVariant HtmlTextBrowser::loadResource(int type, const QUrl &name)
{
    switch (type) {
    case QTextDocument::ImageResource:
        return d->pictures.load(name, searchPaths());
    case QTextDocument::HtmlResource:
    case QTextDocument::MarkdownResource:
        return d->page(name, type == QTextDocument::MarkdownResource);
    default:
        return d->styleSheet(name);
    }
}

HtmlPageCheck::Source HtmlTextBrowser::Private::source(const QUrl &base) const
{
    const QTextDocument *document = q->document();
    return {base, document->defaultStyleSheet(), document->defaultFont(),
            [paths = q->searchPaths()](const QUrl &name) {
                return readInSearchPaths(name, paths, maxStyleSheetBytes);
            }};
}

bool HtmlTextBrowser::Private::isWithinLimits(const QString &text, const QUrl &base,
                                              bool isMarkdown)
{
    const HtmlPageCheck check(textLimits, source(base));
    const HtmlPageCheck::Result result = isMarkdown ? check.checkMarkdown(text) : check.check(text);
    styleSheets = result.styleSheets;
    return result.steps <= maxLayoutSteps;
}

QVariant HtmlTextBrowser::Private::page(const QUrl &name, bool isMarkdown)
{
    // The source of the text, perhaps resolved against that of a page.
    if (name.hasQuery() && name.query().isEmpty()) {
        isTextDue = true;
        isTextInHistory = true;
        return QStringLiteral(" ");
    }
    const QByteArray bytes = readInSearchPaths(name, q->searchPaths(), maxPageBytes);
    const QTextCodec *codec = QTextCodec::codecForHtml(bytes, QTextCodec::codecForName("UTF-8"));
    const QString text = codec->toUnicode(bytes);
    // Qt resolves the names in a page from there.
    const QUrl folder = name.adjusted(QUrl::RemoveFilename);
    const bool isShown =
        isWithinLimits(text, folder.path().isEmpty() ? QUrl() : folder, isMarkdown);
    if (isShown)
        return text;
    const QString plain = shownPlain(text, textLimits);
    return isMarkdown ? asCodeBlock(plain) : plain.toHtmlEscaped();
}

// Qt keeps one resource for each name, of whatever type. Where it is asked for a picture and has
// none, it looks for a file of that name itself, wherever it is; so there is always a picture.
QVariant HtmlTextBrowser::Private::styleSheet(const QUrl &name)
{
    const QPixmap picture = pictures.load(name, q->searchPaths());
    const QByteArray bytes = styleSheets.value(name);
    if (bytes.isEmpty() || !q->source().isRelative())
        return picture;
    pictures.handOver(q->document(), name, picture);
    return bytes;
}

bool HtmlTextBrowser::Private::goBy(int step)
{
    if (step < 0)
        q->backward();
    else if (step > 0)
        q->forward();
    return step != 0;
}

void HtmlTextBrowser::keyPressEvent(QKeyEvent *event)
{
    if (d->goBy(pageStep(event, layoutDirection())))
        event->accept();
    else if (isReturn(event) && d->links.isRefused(d->links.focusedLink()))
        d->links.explainFocusedLink();
    else
        QTextBrowser::keyPressEvent(event);
}

void HtmlTextBrowser::mousePressEvent(QMouseEvent *event)
{
    if (pageStep(event->button()) != 0)
        return;
    d->pressedLink = anchorAt(event->pos());
    QTextBrowser::mousePressEvent(event);
}

void HtmlTextBrowser::mouseReleaseEvent(QMouseEvent *event)
{
    if (d->goBy(pageStep(event->button())))
        return;
    if (!d->links.isRefused(d->pressedLink)) {
        QTextBrowser::mouseReleaseEvent(event);
        return;
    }
    const Qt::TextInteractionFlags flags = textInteractionFlags();
    setTextInteractionFlags(flags & ~Qt::LinksAccessibleByMouse);
    QTextBrowser::mouseReleaseEvent(event);
    setTextInteractionFlags(flags);
    if (event->button() == Qt::LeftButton && anchorAt(event->pos()) == d->pressedLink)
        d->links.explain(event->globalPos());
}

bool HtmlTextBrowser::focusNextPrevChild(bool next)
{
    const bool moved = QTextBrowser::focusNextPrevChild(next);
    d->links.describe();
    return moved;
}

bool HtmlTextBrowser::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        if (d->links.isRefused(anchorAt(help->pos()))) {
            d->links.explain(help->globalPos());
            return true;
        }
    }
    return QTextBrowser::viewportEvent(event);
}
