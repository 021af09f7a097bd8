// SPDX-License-Identifier: MIT

// Compiles the published QtLockedFile in its namespace, as the published sources do it. Their
// includes come first, outside of it.

#include "qtlockedfile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace QtLP_Private {
// NOLINTBEGIN(bugprone-suspicious-include)
#include "qtlockedfile.cpp"
#include "qtlockedfile_unix.cpp"
// NOLINTEND(bugprone-suspicious-include)
} // namespace QtLP_Private
