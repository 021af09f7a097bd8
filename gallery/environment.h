// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

struct GalleryOptions;

// Sees to the environment that @p options need: Qt and fontconfig read it once, while they load.
// Replaces the process by itself, started anew with @p argv, if it is not that environment yet; a
// return means that it is.
void ensureEnvironment(const GalleryOptions &options, char **argv);

// Whether a window can be opened in this environment, with @p options.
[[nodiscard]] bool hasDisplay(const GalleryOptions &options);

// The same for galleries that look alike on the same display, which are to be one process.
[[nodiscard]] QString instanceName(const GalleryOptions &options);
