// SPDX-License-Identifier: MIT

#include "palette.h"

#include <QColor>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

Palette::Palette(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return;
    }
    QJsonParseError parseError;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll(), &parseError).object();
    if (parseError.error != QJsonParseError::NoError) {
        m_error = QStringLiteral("%1: %2").arg(fileName, parseError.errorString());
        return;
    }

    const QJsonObject plain = root.value(QStringLiteral("colors")).toObject();
    for (auto color = plain.begin(); color != plain.end(); ++color) {
        if (!QColor::isValidColor(color.value().toString()))
            m_error = QStringLiteral("%1 is not a color").arg(color.key());
        m_colors.insert(color.key(), color.value().toString());
    }

    const QJsonObject roles = root.value(QStringLiteral("pictures")).toObject();
    for (auto role = roles.begin(); role != roles.end(); ++role) {
        QStringList stateColors;
        const QJsonArray names = role.value().toArray();
        for (const auto &name : names) {
            const QString color = m_colors.value(name.toString());
            if (color.isEmpty())
                m_error = QStringLiteral("role %1 uses an unknown color").arg(role.key());
            stateColors.append(color);
        }
        if (stateColors.size() != stateCount)
            m_error = QStringLiteral("role %1 needs %2 colors").arg(role.key()).arg(stateCount);
        m_roles.insert(role.key(), stateColors);
    }
}

QVector<QRgb> Palette::colors() const
{
    QVector<QRgb> result;
    for (const QString &color : m_colors)
        result.append(QColor(color).rgb());
    return result;
}

QString Palette::applyTo(const QString &text)
{
    return replaceNames(text, m_colors);
}

QString Palette::applyTo(const QString &text, int state)
{
    QMap<QString, QString> colors = m_colors;
    for (auto role = m_roles.cbegin(); role != m_roles.cend(); ++role)
        colors.insert(role.key(), role.value().value(state));
    return replaceNames(text, colors);
}

QString Palette::replaceNames(const QString &text, const QMap<QString, QString> &colors)
{
    static const QRegularExpression name(QStringLiteral("\\$([a-z]+(?:-[a-z]+)*)"));
    const QStringView whole(text);
    QString result;
    int copied = 0;
    auto match = name.globalMatch(text);
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        const QString color = colors.value(found.captured(1));
        if (color.isEmpty())
            m_error = QStringLiteral("unknown color %1").arg(found.captured());
        result += whole.mid(copied, found.capturedStart() - copied);
        result += color;
        copied = found.capturedEnd();
    }
    result += whole.mid(copied);
    return result;
}
