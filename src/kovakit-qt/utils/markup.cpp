// SPDX-License-Identifier: MIT

#include "markup_p.h"

#include <QString>
#include <QTextDocument>
#include <QTextDocumentFragment>

QString withoutMarkup(const QString &text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}
