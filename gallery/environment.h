#pragma once

struct GalleryOptions;

// Sees to the environment that @p options need: Qt and fontconfig read it once, while they load.
// Replaces the process by itself, started anew with @p argv, if it is not that environment yet; a
// return means that it is.
void ensureEnvironment(const GalleryOptions &options, char **argv);

// Whether a window can be opened in this environment.
[[nodiscard]] bool hasDisplay();
