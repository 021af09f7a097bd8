// SPDX-License-Identifier: MIT

#include "markup_p.h"

#include <QString>
#include <QTextDocument>
#include <QTextDocumentFragment>

QString withoutMarkup(const QString &text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

QString withoutMnemonics(const QString &text)
{
    QString words;
    for (int at = 0; at < text.size(); ++at) {
        if (text.at(at) == QLatin1Char('&') && ++at == text.size())
            break;
        words += text.at(at);
    }
    return words;
}
