// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// The files by which the instances of the program @p id find each other, without their extensions.
//
// They lie in a folder that only this user can enter: XDG_RUNTIME_DIR, or one of the library's own
// in the user's cache folder, or one in the temporary folder. What is not this user's own is passed
// over, and so is a folder whose name is too long for a socket. Empty if there is none.
[[nodiscard]] QString instancePlace(const QString &id);

// What is appended.
constexpr char instanceLockExtension[] = ".lock";
constexpr char instanceSocketExtension[] = ".socket";
