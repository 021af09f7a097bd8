// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

// What the command line asks for. Empty texts and a scale of 0 stand for what was not given.
struct GalleryOptions
{
    double scale = 0;
    QString language;
    QString theme;
    QString page;
    QString screenshots;
    bool help = false;
    QStringList qtOptions; // those that Qt takes, with their values
};

// Reads @p arguments, the program's name first; leaves those alone that QApplication takes, such as
// -reverse, -style and -platform, which may stand anywhere among them. Returns what is wrong with
// them, or an empty text. Needs no application object.
[[nodiscard]] QString parseOptions(const QStringList &arguments, GalleryOptions *options);

// The text for --help.
[[nodiscard]] QString helpText();
