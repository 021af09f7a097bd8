// SPDX-License-Identifier: MIT

#pragma once

// What sheets answer with, as the numbers that hosts may have written down.
constexpr int accepted = 1024;
constexpr int refused = 8388608;
