// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/network/image-downloader.h>

#include <QString>
#include <QTextBrowser>

#include <memory>

/**
 * A rich-text view that downloads the pictures of the text it is given.
 *
 * The text says with `<base href="...">` where its pictures lie. Each of them is fetched into the
 * folder "kovaline_help/image" of the system's temporary folder, which becomes a search path of
 * the browser, and shows as soon as it has arrived. Where another user of the machine has taken
 * that name, a private folder takes its place until the program ends. Use QTextBrowser for texts
 * without remote pictures.
 *
 * A page shows only what lies in its search paths: regular files inside them after all links are
 * resolved, pictures of pixels (no drawings, no icon files), and program resources. Below the
 * temporary folder, which everybody shares, only folders count that are this user's own all the
 * way. Anything else,
 * and a picture beyond the limits below, shows as missing. Only http and https addresses are
 * downloaded.
 *
 * What would take too long to lay out is shown plain, without downloads: a text with more of
 * anything than #maxTextLength, #maxWordLength or #maxOpenElements, and one that takes more than
 * #maxLayoutSteps. Shown plain, a text is cut at #maxTextLength, or where it takes too many steps
 * even so, and its words are broken at #maxWordLength. layoutSteps() tells what a text takes.
 *
 * While openLinks and openExternalLinks are on, as Qt calls them, links to http, https and mailto
 * addresses are handed to the desktop, and relative links are followed in the search paths. Links
 * to other programs do nothing; a tooltip and the accessible description say so. With either of
 * the two off the host is told of links as QTextBrowser does it.
 *
 * Back and Forward are the arrow keys with Alt, mirrored from right to left, Backspace for Back,
 * and the mouse buttons for it. A host that wants the text of setText() to be the first page of
 * this history calls setSource(textSource()) once, before it.
 *
 * GUI thread only.
 */
class KOVAKIT_EXPORT HtmlTextBrowser : public QTextBrowser
{
    Q_OBJECT
    /** The distance of the text from the edges, in design pixels. */
    Q_PROPERTY(int pageMargin READ pageMargin WRITE setPageMargin)

public:
    /** The longest text that is shown, in characters. */
    static constexpr int maxTextLength = 500000;
    /** The longest word: letters in a row without a place to break the line. */
    static constexpr int maxWordLength = 5000;
    /** How many elements may be open inside each other. */
    static constexpr int maxOpenElements = 1000;
    /**
     * How many steps it may take to read a text and to lay it out, where a step is about a
     * microsecond of a server's core of 2018 or so: what is within the limit shows there within
     * half a second, most of it in half of that, and is laid out again at another width in a third.
     *
     * Everything has its price, and a table doubles the price of all that is in it, once for each
     * table around. About the most of one kind is: 7,000 cells in a table, 20,000 paragraphs,
     * 200,000 ideographs or half a million other letters, 25,000 emoji, 4,500 list items, 400
     * pictures that float beside one text, 2,500 pictures in one line of text, 1,000 fonts.
     */
    static constexpr qint64 maxLayoutSteps = 500000;
    /** The largest style sheet that is read from a file, in bytes. */
    static constexpr qint64 maxStyleSheetBytes = qint64(16) * 1024;
    /** The largest page that is read from a file, in bytes. */
    static constexpr qint64 maxPageBytes = qint64(4) * 1024 * 1024;
    /** How many pictures of one browser download at once; the others wait their turn in order. */
    static constexpr int maxDownloads = 6;
    /** The largest picture that is shown, in pixels after decoding. */
    static constexpr qint64 maxPicturePixels = qint64(16) * 1024 * 1024;
    /** How many pixels the pictures of one text may have together. */
    static constexpr qint64 maxPagePixels = qint64(64) * 1024 * 1024;
    /**
     * How many steps it may take to decode one picture, of the same kind as #maxLayoutSteps: half a
     * second. They are worked out before it is decoded, from its size, its format and its length;
     * for a JPEG picture from the number of its scans too, for a PNG picture from what is folded up
     * in it besides pixels. One in arithmetic coding is refused.
     */
    static constexpr qint64 maxPictureSteps = 500000;
    /**
     * How many steps it may take to decode all pictures of a text, also those that turn out to be
     * none: two seconds. What is known to be no picture is not decoded again under another name.
     */
    static constexpr qint64 maxPagePictureSteps = 2000000;

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

    /**
     * The source that stands for the text of setText(), for setSource().
     *
     * Once it has been the source, a page that is reached by a link has a way back to the text, and
     * each new text begins a new history with this source.
     */
    [[nodiscard]] static QUrl textSource();

    /** The distance of the text from the edges, in design pixels; -1 until one is set, which is
     * Qt's own. */
    [[nodiscard]] int pageMargin() const;

    /** Sets the distance of the text from the edges to @p margin design pixels. Style sheets set it
     * as "qproperty-pageMargin". */
    void setPageMargin(int margin);

    /**
     * How many steps it takes to show @p text in this browser, at most one more than
     * #maxLayoutSteps: as many for a text that is shown plain, whatever the reason. For those who
     * write pages, to see how far they are from the limit.
     */
    [[nodiscard]] qint64 layoutSteps(const QString &text) const;

    /**
     * The picture, page or style sheet @p name, from the search paths alone. A style sheet only for
     * the text that setText() or setSource() shows, and only within its #maxLayoutSteps.
     */
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

protected:
    /** Goes through the history, and keeps Return from a link that is not to be followed. */
    void keyPressEvent(QKeyEvent *event) override;
    /** Notes the link under the pointer, and takes the buttons for the history. */
    void mousePressEvent(QMouseEvent *event) override;
    /** Goes through the history, and keeps a click from a link that is not to be followed. */
    void mouseReleaseEvent(QMouseEvent *event) override;
    /** Tells assistive technology of a link that is not to be followed. */
    bool focusNextPrevChild(bool next) override;
    /** Shows the tooltip of such a link. */
    bool viewportEvent(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
