// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

#include <map>

/**
 * The three-letter language codes of the products ("enu", "deu", "cht") by locale name.
 *
 * For hosts that choose their texts by such a code, usually once at start-up with
 * getDefaultLanguage(); no widget asks it. Names are compared as they are, so pass them in lower
 * case ("de_de", "zh_tw"). GUI thread only.
 */
class KOVAKIT_EXPORT KovaLocale
{
public:
    /** The one instance of the process, created with the built-in table by the first call. */
    static KovaLocale *getInstance();

    /**
     * The code of @p locale, a lower-case locale name with or without a country.
     *
     * Portuguese and Chinese are decided by the whole name, every other language by what stands
     * before the first "_". A language that is not known gives "enu".
     */
    [[nodiscard]] QString getLanguageByLocale(const QString &locale) const;

    /** The code of the system's locale, read anew by each call. */
    [[nodiscard]] QString getDefaultLanguage() const;

    /** The code of a Portuguese @p locale: "ptg" for Portugal or no country, else "ptb". */
    [[nodiscard]] QString getPortugueseLanguage(const QString &locale) const;

    /** The code of a Chinese @p locale: "cht" for Taiwan, Hong Kong and Macao, else "chs". */
    [[nodiscard]] QString getChineseLanguage(const QString &locale) const;

    /**
     * Gives the language @p languagePart, the part of a locale name before the "_", the code
     * @p code, in place of the one that it had.
     *
     * "pt" and "zh" can be set but are never asked for.
     */
    void setLanguageMap(QString languagePart, QString code);

private:
    KovaLocale();
    Q_DISABLE_COPY(KovaLocale)

    std::map<QString, QString> m_languages;
    QString m_fallback;
};
