// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QHash>
#include <QPixmap>
#include <QSet>
#include <QStringList>
#include <QUrl>

class QTextDocument;

// Opens the regular file that @p name stands for, if it lies inside one of @p searchPaths after
// all links are resolved, and if nobody but this user can have put it there. Program resources
// (qrc:) are opened as well.
[[nodiscard]] bool openInSearchPaths(QFile &file, const QUrl &name, const QStringList &searchPaths);

// The bytes of that file; none if there are more than @p maxBytes.
[[nodiscard]] QByteArray readInSearchPaths(const QUrl &name, const QStringList &searchPaths,
                                           qint64 maxBytes);

// What pictures may have and still be decoded.
struct HtmlPictureLimits
{
    qint64 fileBytes;
    qint64 picturePixels;
    qint64 pagePixels; // of all pictures of a text together
    qint64 pictureSteps; // of a microsecond each
    qint64 pageSteps;
};

// The pictures of the text on show: reads them from the search paths within limits, and reads them
// again when their files have changed.
class HtmlPictures
{
public:
    explicit HtmlPictures(const HtmlPictureLimits &limits);

    // Lets the picture called @p name show the downloaded file @p path, whose name may be spelled
    // otherwise: with percent signs or a query. Files in the search paths go first.
    void addDownload(const QUrl &name, const QString &path);

    // The picture called @p name, or a placeholder; never null.
    QPixmap load(const QUrl &name, const QStringList &searchPaths);

    // Reads the pictures anew whose file names are in @p fileNames and hands them to @p document.
    // Whether any of them differs from before, so that the text has to be laid out again.
    bool refresh(QTextDocument *document, const QSet<QString> &fileNames,
                 const QStringList &searchPaths);

    // Lets @p document show @p pixmap under the name @p name, whatever else it has under it.
    void handOver(QTextDocument *document, const QUrl &name, const QPixmap &pixmap);

    // The file names of all pictures that were asked for.
    [[nodiscard]] QSet<QString> fileNames() const;

    // Forgets all pictures, also those that @p document was handed.
    void clear(QTextDocument *document);

private:
    struct Picture
    {
        qint64 pixels = 0;
        double cost = 0; // nanoseconds, also of one that was refused
        bool isHandedOver = false;
    };
    QPixmap placeholder();
    QPixmap read(const QUrl &name, const QStringList &searchPaths);
    QByteArray bytesOf(const QUrl &name, const QStringList &searchPaths) const;
    bool charge(Picture &picture, double nanoseconds);
    QPixmap decode(QByteArray bytes, Picture &picture);
    QString fileNameOf(const QUrl &name) const;

    const HtmlPictureLimits m_limits;
    QHash<QUrl, Picture> m_pictures;
    QHash<QUrl, QString> m_downloads;
    QMultiHash<QString, QUrl> m_namesOfFile;
    // What turned out to be no picture, by what is in it.
    QSet<QByteArray> m_failed;
    qint64 m_pixels = 0;
    double m_cost = 0;
    QPixmap m_placeholder;
};
