// SPDX-License-Identifier: MIT

#include "style-manager.h"

#include "kovakit-qt/utils/file-text_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/util.h>

#include <QFile>
#include <QRegularExpression>
#include <QStringView>

#include <utility>

namespace {

// Removes everything from @p open to the nearest following @p close, both included. An opening
// mark that is never closed stays, with all that follows it.
QString withoutComments(const QString &text, QLatin1String open, QLatin1String close)
{
    const QStringView whole(text);
    QString result;
    result.reserve(text.size());
    int kept = 0;
    for (int from = text.indexOf(open); from >= 0; from = text.indexOf(open, kept)) {
        const int end = text.indexOf(close, from + open.size());
        if (end < 0)
            break;
        result.append(whole.mid(kept, from - kept));
        kept = end + close.size();
    }
    result.append(whole.mid(kept));
    return result;
}

bool isHeader(QStringView line)
{
    const QLatin1String mark("==");
    return line.startsWith(mark) && line.endsWith(mark);
}

QString headerKey(QStringView line)
{
    return line.toString().remove(QLatin1Char('=')).remove(QLatin1Char(' '));
}

// @p folder as it may stand in a style text. Its name may hold what begins a comment or reads like
// a length; written as escapes, which Qt undoes before it reads the text, these are left alone.
QString folderInText(QString folder)
{
    static const QRegularExpression slashes(QStringLiteral("//+"));
    static const QRegularExpression unit(QStringLiteral("(?<=[\\p{Nd}.])px"));
    return folder.replace(slashes, QStringLiteral("/"))
        .replace(QLatin1String("/*"), QLatin1String("/\\00002a"))
        .replace(QLatin1String("*/"), QLatin1String("\\00002a/"))
        .replace(unit, QStringLiteral("\\000070x"));
}

} // namespace

StyleManager *StyleManager::getInstance()
{
    static StyleManager instance;
    return &instance;
}

void StyleManager::initialize(const std::vector<QString> &files)
{
    QString text;
    for (const QString &path : files) {
        if (!QFile::exists(path)) {
            qCWarning(debug_message) << "file" << path << "not exist";
            continue;
        }
        text.append(readFileText(path));
        text.append(QLatin1Char('\n'));
    }

    // The longer placeholder holds the shorter one.
    const ImageManager *images = ImageManager::getInstance();
    text.replace(QLatin1String("TMPIMG_LOC"), folderInText(images->getTempImageFolder()));
    text.replace(QLatin1String("IMG_LOC"), folderInText(images->getImageFolder()));

    text = withoutComments(text, QLatin1String("/*"), QLatin1String("*/"));
    text = withoutComments(text, QLatin1String("//"), QLatin1String("\n"));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);

    QString key;
    QString body;
    const QList<QStringView> lines = QStringView(text).split(QLatin1Char('\n'));
    for (const QStringView line : lines) {
        if (!isHeader(line)) {
            body.append(QLatin1Char('\n'));
            body.append(line);
            continue;
        }
        // Lines that no key has claimed yet go to the next one.
        if (!key.isEmpty()) {
            m_styleSheets.insert_or_assign(key, body);
            body.clear();
        }
        key = headerKey(line);
    }
    if (!key.isEmpty())
        m_styleSheets.insert_or_assign(key, body);
}

QString StyleManager::getStyleSheet(const QString &key, bool noScale) const
{
    const auto found = m_styleSheets.find(key);
    if (found == m_styleSheets.end()) {
        qCWarning(debug_message) << "Cannot find stylesheet" << key;
        return QString();
    }
    return noScale ? found->second : DPIinfo::getInstance()->getScaledStyleSheet(found->second);
}

bool StyleManager::hasStyleSheet(const QString &key) const
{
    return m_styleSheets.count(key) > 0;
}

QString getStyleSheet(const char *key, bool noScale)
{
    return getStyleSheet(QString::fromLatin1(key), noScale);
}

QString getStyleSheet(const QString &key, bool noScale)
{
    return StyleManager::getInstance()->getStyleSheet(key, noScale);
}
