// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class GalleryWindow;

// Writes a picture of the page @p pageName, or of every page if that is empty, and of every scene
// over it, into @p folder, which is made if it is missing. Runs event loops. Returns what went
// wrong, or an empty text.
[[nodiscard]] QString takeScreenshots(GalleryWindow *window, const QString &folder,
                                      const QString &pageName);
