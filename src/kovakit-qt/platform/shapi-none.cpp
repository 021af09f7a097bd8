// SPDX-License-Identifier: MIT

#include <kovakit-qt/platform/shapi-linux.h>

void SHAPISetCloseButtonOfWindowEnable(QWidget *, bool, void **) { }
