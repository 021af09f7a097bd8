// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/network/image-downloader.h>
