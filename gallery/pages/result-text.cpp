// SPDX-License-Identifier: MIT

#include "result-text.h"

#include "gallery-page.h"

#include <QMessageBox>

QString resultText(int code)
{
    switch (code) {
    case 0:
        return GalleryPage::tr("0: ended without a button");
    case QMessageBox::Ok:
        return GalleryPage::tr("%1 (QMessageBox::Ok): the accept button was pressed").arg(code);
    case QMessageBox::Discard:
        return GalleryPage::tr(
                   "%1 (QMessageBox::Discard): the second button of a sheet was pressed")
            .arg(code);
    case QMessageBox::Cancel:
        return GalleryPage::tr("%1 (QMessageBox::Cancel): the box was declined or closed")
            .arg(code);
    default:
        return QStringLiteral("%1").arg(code);
    }
}
