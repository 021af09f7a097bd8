// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>
#include <QString>

class KovaMessageSheet;
class QWidget;

// A host that has started up in the ordinary order with the house theme: paths, English strings,
// pictures, style files. Call it once, in initTestCase().
void setUpHost();

// Replaces the strings by those of the house theme in another language, "deu" for instance.
void installThemeStrings(const QString &languageCode);

// The folder of the built house theme, and one of its JSON files.
QString themeFolder();
QJsonObject readThemeFile(const QString &name);

// A folder that is removed with its contents when the test ends.
QString scratchFolder();

// Writes a file below scratchFolder() and returns its path; makes missing folders.
QString writeScratchFile(const QString &name, const QByteArray &content);

// The message sheet that is up in a window, or none.
KovaMessageSheet *visibleSheet(const QWidget *window);
