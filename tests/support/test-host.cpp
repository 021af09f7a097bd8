// SPDX-License-Identifier: MIT

#include "test-host.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <vector>

QString themeFolder()
{
    return QStringLiteral(KOVAKIT_THEME_DIR);
}

QString scratchFolder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

QString writeScratchFile(const QString &name, const QByteArray &content)
{
    const QString path = scratchFolder() + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

QJsonObject readThemeFile(const QString &name)
{
    QFile file(themeFolder() + QLatin1Char('/') + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the house theme has no %s", qPrintable(name));
    return QJsonDocument::fromJson(file.readAll()).object();
}

void installThemeStrings(const QString &languageCode)
{
    QMap<QString, QString> strings;
    const QJsonObject table = readThemeFile(QStringLiteral("strings/%1.json").arg(languageCode));
    for (auto it = table.begin(); it != table.end(); ++it)
        strings.insert(it.key(), it.value().toString());
    ComponentStrings::getInstance()->installStrings(strings);
}

void setUpHost()
{
    UIPathManager *paths = UIPathManager::getInstance();
    paths->setPath(QStringLiteral("resource_path"), themeFolder());
    paths->setPath(QStringLiteral("user_data_path"), scratchFolder() + QLatin1String("/user"));

    installThemeStrings(QStringLiteral("enu"));
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);

    std::vector<QString> files;
    const QFileInfoList styles =
        QDir(themeFolder() + QLatin1String("/styles")).entryInfoList({QStringLiteral("*.qss")});
    for (const QFileInfo &style : styles)
        files.push_back(style.filePath());
    StyleManager::getInstance()->initialize(files);
}

KovaMessageSheet *visibleSheet(const QWidget *window)
{
    for (auto *sheet : window->findChildren<KovaMessageSheet *>()) {
        if (sheet->isVisible())
            return sheet;
    }
    return nullptr;
}
