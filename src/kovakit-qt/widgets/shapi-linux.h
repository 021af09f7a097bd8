// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/platform/shapi-linux.h>
