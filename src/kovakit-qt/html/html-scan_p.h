// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

// What a rich text says about the pictures that it shows.
struct HtmlPictureSources
{
    // False if the text names no base address, or does not end it.
    bool hasBase = false;
    QString baseUrl;
    // Each distinct source once, in the order of the text.
    QStringList sources;
};

// Reads the base address and the sources of the pictures after it. Takes the marks as they are
// written by the help editors: lower case, double quotes, the base's href first. Linear in the
// text, whatever stands in it.
[[nodiscard]] HtmlPictureSources scanPictureSources(const QString &text);
