// SPDX-License-Identifier: MIT

// Turns the sources of a theme into the files of a resource folder. Run by the build.

#include "gif-writer.h"
#include "palette.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>
#include <QTextStream>

namespace {

constexpr int pictureScale = 4;
constexpr int movieScale = 8;
constexpr int movieFrames = 30;
constexpr int hundredthsPerFrame = 4;
const QString stateSuffixes[Palette::stateCount] = {
    QString(), QStringLiteral("_hover"), QStringLiteral("_click"), QStringLiteral("_disable")};

QString readText(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool writeBytes(const QString &fileName, const QByteArray &bytes)
{
    QSaveFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

QSize sizeOf(QSvgRenderer &drawing, int scale)
{
    return (drawing.viewBoxF().size() * scale).toSize();
}

bool renderPicture(Palette &palette, const QFileInfo &source, const QString &folder)
{
    const QString text = readText(source.filePath());
    for (int state = 0; state < Palette::stateCount; ++state) {
        QSvgRenderer drawing(palette.applyTo(text, state).toUtf8());
        if (!drawing.isValid())
            return false;
        QImage image(sizeOf(drawing, pictureScale), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        drawing.render(&painter);
        painter.end();
        const QString name = source.completeBaseName() + stateSuffixes[state];
        if (!image.save(QStringLiteral("%1/%2.png").arg(folder, name), "PNG"))
            return false;
    }
    return true;
}

// The drawing makes one turn. It is large and has hard edges, because a GIF knows no partly
// transparent pixel; scaled down for display its edges come out smooth on any background.
bool renderMovie(Palette &palette, const QFileInfo &source, const QString &folder)
{
    QSvgRenderer drawing(palette.applyTo(readText(source.filePath()), 0).toUtf8());
    if (!drawing.isValid())
        return false;
    const QSize size = sizeOf(drawing, movieScale);
    GifWriter movie(size, hundredthsPerFrame, palette.colors());
    for (int frame = 0; frame < movieFrames; ++frame) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(size.width() / 2.0, size.height() / 2.0);
        painter.rotate(360.0 * frame / movieFrames);
        drawing.render(&painter, QRectF(QPointF(-size.width() / 2.0, -size.height() / 2.0), size));
        painter.end();
        movie.addFrame(image);
    }
    return writeBytes(QStringLiteral("%1/%2.gif").arg(folder, source.completeBaseName()),
                      movie.result());
}

bool writeStyle(Palette &palette, const QFileInfo &source, const QString &folder)
{
    const QString text = palette.applyTo(readText(source.filePath()));
    return !text.isEmpty()
        && writeBytes(QStringLiteral("%1/%2").arg(folder, source.fileName()), text.toUtf8());
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QTextStream errors(stderr);
    const QStringList arguments = QCoreApplication::arguments().mid(1);

    bool (*convert)(Palette &, const QFileInfo &, const QString &) = nullptr;
    const QString what = arguments.value(0);
    if (what == QLatin1String("pictures"))
        convert = renderPicture;
    else if (what == QLatin1String("movies"))
        convert = renderMovie;
    else if (what == QLatin1String("styles"))
        convert = writeStyle;
    if (!convert || arguments.size() < 3) {
        errors << "usage: kovakit-theme-tool pictures|movies|styles PALETTE FOLDER SOURCE...\n";
        return 2;
    }

    Palette palette(arguments.at(1));
    const QString &folder = arguments.at(2);
    if (!palette.error().isEmpty()) {
        errors << palette.error() << '\n';
        return 1;
    }
    if (!QDir().mkpath(folder)) {
        errors << "cannot create " << folder << '\n';
        return 1;
    }
    for (const QString &source : arguments.mid(3)) {
        const bool done = convert(palette, QFileInfo(source), folder);
        if (!done || !palette.error().isEmpty()) {
            errors << source << ": cannot be converted. " << palette.error() << '\n';
            return 1;
        }
    }
    return 0;
}
