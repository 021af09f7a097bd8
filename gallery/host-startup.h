// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

// What a host tells the library before it creates its first widget.
struct HostSettings
{
    QString themeFolder; // holds images.json and the folders images, styles and strings
    QString userDataFolder; // where the scaled copies of pictures are written
    QString language; // code of a table in the theme's folder strings
    QStringList styleFiles; // the host's own, read after the theme's
};

// Starts the library up: paths, strings, pictures, styles, in the order in which they need each
// other. Call it once, after the QApplication was created. Returns what prevents it, or an empty
// text. A language without strings is no reason: a message is printed and English is shown.
[[nodiscard]] QString startUpHost(const HostSettings &settings);

// The language that the library was started up with, and the strings of any language of the same
// theme; what a language lacks is in English.
[[nodiscard]] QString hostLanguage();
[[nodiscard]] QMap<QString, QString> stringsOfLanguage(const QString &language);

// The folder of the house theme as seen from this program, installed or in the build tree; empty
// if there is none.
[[nodiscard]] QString houseThemeFolder();
