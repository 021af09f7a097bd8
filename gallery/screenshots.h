#pragma once

#include <QString>

class GalleryWindow;

// Writes a picture of every page, and of every scene over it, into @p folder, which is made if it
// is missing. Needs a running event loop. Returns what went wrong, or an empty text.
[[nodiscard]] QString takeScreenshots(GalleryWindow *window, const QString &folder);
