// SPDX-License-Identifier: MIT

#include "kova-locale.h"

#include <QLocale>

#include <utility>

KovaLocale::KovaLocale()
    : m_fallback(QStringLiteral("enu"))
{
    static constexpr struct
    {
        const char *languagePart;
        const char *code;
    } table[] = {
        {"en", "enu"}, {"ja", "jpn"}, {"de", "deu"}, {"ko", "krn"}, {"fr", "fra"}, {"it", "ita"},
        {"es", "esn"}, {"ru", "rus"}, {"da", "dan"}, {"no", "nor"}, {"nb", "nor"}, {"nn", "nor"},
        {"sv", "sve"}, {"nl", "nld"}, {"pl", "plk"}, {"hu", "hun"}, {"tr", "trk"}, {"cs", "csy"},
    };
    for (const auto &row : table)
        setLanguageMap(QLatin1String(row.languagePart), QLatin1String(row.code));
}

KovaLocale *KovaLocale::getInstance()
{
    static KovaLocale instance;
    return &instance;
}

QString KovaLocale::getLanguageByLocale(const QString &locale) const
{
    const QString languagePart = locale.section(QLatin1Char('_'), 0, 0);
    if (languagePart == QLatin1String("pt"))
        return getPortugueseLanguage(locale);
    if (languagePart == QLatin1String("zh"))
        return getChineseLanguage(locale);
    const auto found = m_languages.find(languagePart);
    return found == m_languages.end() ? m_fallback : found->second;
}

QString KovaLocale::getDefaultLanguage() const
{
    return getLanguageByLocale(QLocale::system().name().toLower());
}

QString KovaLocale::getPortugueseLanguage(const QString &locale) const
{
    const bool european = locale == QLatin1String("pt") || locale == QLatin1String("pt_pt");
    return european ? QStringLiteral("ptg") : QStringLiteral("ptb");
}

QString KovaLocale::getChineseLanguage(const QString &locale) const
{
    const bool traditional = locale == QLatin1String("zh_tw") || locale == QLatin1String("zh_hk")
                          || locale == QLatin1String("zh_mo");
    return traditional ? QStringLiteral("cht") : QStringLiteral("chs");
}

void KovaLocale::setLanguageMap(QString languagePart, QString code)
{
    m_languages[languagePart] = code;
}
