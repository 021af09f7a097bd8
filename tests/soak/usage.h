// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

// What this process holds at one moment.
struct Usage
{
    qint64 bytes; // of memory that nobody else shares and that was written to
    int descriptors;
    int threads;
    int xResources; // windows, pixmaps, cursors and the like that the X server keeps for it

    // Deletes what is to be deleted later and gives freed memory back, so that what is left is
    // held. Needs a window of Qt's on the X server, by which that one knows the process.
    [[nodiscard]] static Usage now();

    [[nodiscard]] Usage since(const Usage &before) const;
};
