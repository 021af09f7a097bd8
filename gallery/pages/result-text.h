// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// What a sheet or a message box returned, in words: the number, its name and what it means.
[[nodiscard]] QString resultText(int code);
