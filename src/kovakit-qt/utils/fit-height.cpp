// SPDX-License-Identifier: MIT

#include "fit-height_p.h"

#include <QWidget>

void fitHeightToWidth(QWidget *label)
{
    // A label never asks for less than its minimum.
    const int minimum = label->minimumHeight();
    label->setMinimumHeight(0);
    const int height = label->heightForWidth(label->width());
    if (height >= 0)
        label->setFixedHeight(height);
    else
        label->setMinimumHeight(minimum);
}
