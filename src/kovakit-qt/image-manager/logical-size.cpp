// SPDX-License-Identifier: MIT

#include "logical-size_p.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QPixmap>

QSize logicalSize(const QPixmap &picture)
{
    const double ratio = DPIinfo::getInstance()->getDPR();
    return {qRound(picture.width() / ratio), qRound(picture.height() / ratio)};
}
