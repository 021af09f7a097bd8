// SPDX-License-Identifier: MIT

#include "words.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

GalleryWords::GalleryWords(const QString &languageCode)
{
    QFile file(QStringLiteral(":/gallery/words/%1.json").arg(languageCode));
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonObject table = QJsonDocument::fromJson(file.readAll()).object();
    for (auto it = table.begin(); it != table.end(); ++it)
        m_words.insert(it.key(), it.value().toString());
}

QString GalleryWords::translate(const char *, const char *sourceText, const char *, int) const
{
    return m_words.value(QString::fromUtf8(sourceText));
}
