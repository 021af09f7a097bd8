// SPDX-License-Identifier: MIT

#include "languages.h"

#include <QMap>

namespace {

const QMap<QString, QString> &localeNames()
{
    static const QMap<QString, QString> names = {
        {QStringLiteral("chs"), QStringLiteral("zh_CN")},
        {QStringLiteral("cht"), QStringLiteral("zh_TW")},
        {QStringLiteral("csy"), QStringLiteral("cs_CZ")},
        {QStringLiteral("dan"), QStringLiteral("da_DK")},
        {QStringLiteral("deu"), QStringLiteral("de_DE")},
        {QStringLiteral("enu"), QStringLiteral("en_US")},
        {QStringLiteral("esn"), QStringLiteral("es_ES")},
        {QStringLiteral("fra"), QStringLiteral("fr_FR")},
        {QStringLiteral("hun"), QStringLiteral("hu_HU")},
        {QStringLiteral("ita"), QStringLiteral("it_IT")},
        {QStringLiteral("jpn"), QStringLiteral("ja_JP")},
        {QStringLiteral("krn"), QStringLiteral("ko_KR")},
        {QStringLiteral("nld"), QStringLiteral("nl_NL")},
        {QStringLiteral("nor"), QStringLiteral("nb_NO")},
        {QStringLiteral("plk"), QStringLiteral("pl_PL")},
        {QStringLiteral("ptb"), QStringLiteral("pt_BR")},
        {QStringLiteral("ptg"), QStringLiteral("pt_PT")},
        {QStringLiteral("rus"), QStringLiteral("ru_RU")},
        {QStringLiteral("sve"), QStringLiteral("sv_SE")},
        {QStringLiteral("trk"), QStringLiteral("tr_TR")},
    };
    return names;
}

} // namespace

QStringList languageCodes()
{
    return localeNames().keys();
}

QString localeName(const QString &languageCode)
{
    return localeNames().value(languageCode);
}
