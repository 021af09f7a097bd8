// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <vector>

class GalleryPage;

// A page of the gallery, made when it is first visited.
struct PageEntry
{
    QString name; // for --page and for the names of pictures
    const char *title; // in English, for GalleryPage::tr()
    const char *summary; // one sentence under the title, likewise
    GalleryPage *(*create)();
};

// All pages, in the order in which they are listed.
[[nodiscard]] const std::vector<PageEntry> &pageRegistry();
