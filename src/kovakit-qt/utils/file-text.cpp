// SPDX-License-Identifier: MIT

#include "file-text_p.h"

#include <QFile>
#include <QFileInfo>

QString readFileText(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return QString();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    const QByteArray bytes = file.readAll();
    const int end = bytes.indexOf('\0');
    return QString::fromUtf8(bytes.constData(), end < 0 ? bytes.size() : end);
}
