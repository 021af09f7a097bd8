// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// The text of the file at @p path: UTF-8, read up to its first NUL byte, without carriage returns.
//
// Empty when the file is missing, unreadable or anything but a regular file: a pipe or a device
// among the host's resources must not stop the program.
[[nodiscard]] QString readFileText(const QString &path);
