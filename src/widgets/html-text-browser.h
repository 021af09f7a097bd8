#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/widgets/image-downloader.h>

#include <QMap>
#include <QSet>
#include <QString>
#include <QTextBrowser>

#include <memory>

class HtmlDownloadQueue;
class HtmlPictures;
class QTimer;

/**
 * A rich-text view that downloads the pictures of the text it is given.
 *
 * The text says with `<base href="...">` where its pictures lie. Each of them is fetched into the
 * folder "kovaline_help/image" of the system's temporary folder, which becomes a search path of
 * the browser, and shows as soon as it has arrived. Use QTextBrowser for texts without remote
 * pictures.
 *
 * A page shows only what lies in its search paths: regular files inside them after all links are
 * resolved, pictures of pixels (no drawings, no icon files), and program resources. Anything else,
 * and a picture beyond the limits below, shows as missing. Only http and https addresses are
 * downloaded.
 *
 * What would take too long to lay out is shown plain, without downloads: a text of more than
 * 500,000 characters, with a word of more than 5,000, with more than 1,000 elements or 10 tables
 * open inside each other, with more than 4,000 list items or more than 10,000 columns under cells
 * that span several, or with more than 5,000,000 style rules times elements. Shown plain, a text is
 * cut after 500,000 characters and its words are broken after 5,000.
 *
 * GUI thread only.
 */
class KOVAKIT_EXPORT HtmlTextBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    /** How many pictures of one browser download at once; the others wait their turn in order. */
    static constexpr int maxDownloads = 6;
    /** The largest picture that is shown, in pixels after decoding. */
    static constexpr qint64 maxPicturePixels = qint64(16) * 1024 * 1024;
    /** How many pixels the pictures of one text may have together. */
    static constexpr qint64 maxPagePixels = qint64(64) * 1024 * 1024;

    /** An empty browser; @p parent owns it. */
    explicit HtmlTextBrowser(QWidget *parent = nullptr);

    /** Stops the downloads that still run: none of them writes a file or emits any more. */
    ~HtmlTextBrowser() override;

    /**
     * Shows @p text, and downloads its pictures if it is rich text with a base address.
     *
     * The base is the first `<base href="` of the text. The source of each `<img` after it, in
     * lower case and double quotes, is appended to the base as it stands and downloaded once; the
     * file is named by what follows its last slash. Downloads that an earlier text began go on,
     * unless the new text begins the same ones. Each call with a base puts the picture folder in
     * front of the search paths.
     *
     * A download that has been silent for 60 seconds is ended as a network error; while other
     * pictures wait, one that has been silent for 10 seconds or has taken 60 in all.
     */
    void setText(const QString &text);

    /** The picture, page or style sheet @p name, from the search paths alone. */
    QVariant loadResource(int type, const QUrl &name) override;

public Q_SLOTS:
    /**
     * Takes the download from @p url off the list, deletes it later and has the pictures shown
     * anew, whatever its @p result.
     */
    void slotDownloadFinished(QString url, int result);

    /**
     * Reads the pictures of the text again and shows them at their natural size. The text that is
     * being read stays where it is in the window, also when pictures above it grow; a page that is
     * not scrolled down stays at its top, and the selection is kept. Calls within 40 ms are
     * answered together, and at once when no download runs or waits any more; after downloads only
     * their pictures are read.
     *
     * A text that came from a source, by setSource() or a link, is loaded again as QTextBrowser
     * does it.
     */
    void reload() override;

private:
    void beginDownloads(const QString &text);
    void showPicturesAnew();
    QVariant styleSheet(const QUrl &name, const QByteArray &bytes);

    QString baseUrl;
    QString reserved;
    QMap<QString, ImageDownloader *> downloaders;
    std::unique_ptr<HtmlPictures> m_pictures;
    std::unique_ptr<HtmlDownloadQueue> m_queue;
    QTimer *m_gather;
    QSet<QString> m_arrivedFiles;
};
