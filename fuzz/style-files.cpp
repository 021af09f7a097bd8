// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include "kovakit-qt/style/pixel-lengths_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include <QRegularExpression>

// What is read from a style file against its definition.

namespace {

using Entries = std::map<QString, QString>;

QString decoded(QByteArray bytes)
{
    const int nul = bytes.indexOf('\0');
    if (nul >= 0)
        bytes.truncate(nul);
    return QString::fromUtf8(bytes.replace('\r', QByteArray()));
}

Entries entriesByDefinition(QString text)
{
    static const QRegularExpression block(QStringLiteral("/\\*.*?\\*/"),
                                          QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression line(QStringLiteral("//[^\\n]*\\n"));
    static const QRegularExpression header(QStringLiteral("^==(.*==)?$|^===$"),
                                           QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression marks(QStringLiteral("[= ]"));
    const ImageManager *images = ImageManager::getInstance();
    text += QLatin1Char('\n');
    text.replace(QLatin1String("TMPIMG_LOC"), images->getTempImageFolder());
    text.replace(QLatin1String("IMG_LOC"), images->getImageFolder());
    text.remove(block).remove(line);
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);

    Entries entries;
    QString key;
    QString body;
    for (const QString &row : text.split(QLatin1Char('\n'))) {
        if (!header.match(row).hasMatch()) {
            body += QLatin1Char('\n') + row;
            continue;
        }
        if (!key.isEmpty())
            entries[key] = std::exchange(body, QString());
        key = QString(row).remove(marks);
    }
    if (!key.isEmpty())
        entries[key] = body;
    return entries;
}

QString fileName()
{
    static const QString name = scratchFolder() + QLatin1String("/input.qss");
    return name;
}

} // namespace

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzing(argc, argv);
    for (const char *name : {"resource_path", "user_data_path"})
        UIPathManager::getInstance()->setPath(QLatin1String(name), scratchFolder());
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    writeFile(fileName(), bytes);
    // The one instance of a program would keep the entries of all inputs.
    StyleManager manager;
    manager.initialize({fileName()});
    const Entries expected = entriesByDefinition(decoded(bytes));
    expect(manager.m_styleSheets.size() == expected.size(), "there are as many entries");
    for (const auto &[key, body] : expected) {
        expectEqual(manager.getStyleSheet(key, true), body, "An entry has another text.");
        expectEqual(manager.getStyleSheet(key, false), scalePixelLengths(body, 1),
                    "An entry is scaled otherwise.");
    }
    return 0;
}
