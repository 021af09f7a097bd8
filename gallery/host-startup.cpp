// SPDX-License-Identifier: MIT

#include "host-startup.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

QString &startedLanguage()
{
    static QString language = QStringLiteral("enu");
    return language;
}

QDir stringFolder()
{
    return QDir(UIPathManager::getInstance()->getPath(QStringLiteral("resource_path"))
                + QLatin1String("/strings"));
}

QMap<QString, QString> readStrings(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject table = QJsonDocument::fromJson(file.readAll()).object();
    QMap<QString, QString> strings;
    for (auto it = table.begin(); it != table.end(); ++it)
        strings.insert(it.key(), it.value().toString());
    return strings;
}

std::vector<QString> styleFilesOf(const HostSettings &settings)
{
    std::vector<QString> files;
    const QDir folder(settings.themeFolder + QLatin1String("/styles"));
    for (const QString &name : folder.entryList({QStringLiteral("*.qss")}, QDir::Files, QDir::Name))
        files.push_back(folder.filePath(name));
    files.insert(files.end(), settings.styleFiles.begin(), settings.styleFiles.end());
    return files;
}

} // namespace

QString hostLanguage()
{
    return startedLanguage();
}

QMap<QString, QString> stringsOfLanguage(const QString &language)
{
    const QDir folder = stringFolder();
    QMap<QString, QString> strings = readStrings(folder.filePath(QStringLiteral("enu.json")));
    const QMap<QString, QString> translated =
        readStrings(folder.filePath(language + QLatin1String(".json")));
    for (auto it = translated.begin(); it != translated.end(); ++it)
        strings.insert(it.key(), it.value());
    return strings;
}

QString startUpHost(const HostSettings &settings)
{
    const QDir theme(settings.themeFolder);
    if (settings.themeFolder.isEmpty() || !theme.exists())
        return QStringLiteral("The theme folder \"%1\" does not exist.").arg(settings.themeFolder);
    if (!theme.exists(QStringLiteral("images.json"))) {
        return QStringLiteral("The folder \"%1\" is no theme: it has no images.json.")
            .arg(settings.themeFolder);
    }

    UIPathManager *paths = UIPathManager::getInstance();
    paths->setPath(QStringLiteral("resource_path"), theme.absolutePath());
    paths->setPath(QStringLiteral("user_data_path"), settings.userDataFolder);
    const QStringList tables = stringFolder().entryList({QStringLiteral("*.json")});
    if (tables.contains(settings.language + QLatin1String(".json"))) {
        startedLanguage() = settings.language;
    } else {
        std::fprintf(stderr, "No strings for the language \"%s\": showing English.\n",
                     qPrintable(settings.language));
    }
    ComponentStrings::getInstance()->installStrings(stringsOfLanguage(hostLanguage()));
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);
    StyleManager::getInstance()->initialize(styleFilesOf(settings));
    return QString();
}

QString houseThemeFolder()
{
    const QDir program(QCoreApplication::applicationDirPath());
    for (const QString &folder :
         {QStringLiteral(GALLERY_INSTALLED_THEME), QStringLiteral("../theme")}) {
        QString path = QDir::cleanPath(program.absoluteFilePath(folder));
        if (QFile::exists(path + QLatin1String("/images.json")))
            return path;
    }
    return QString();
}
