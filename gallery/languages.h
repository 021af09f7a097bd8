// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

// The codes of the languages that the house theme has strings for, in alphabetical order.
[[nodiscard]] QStringList languageCodes();

// The name of the locale of a language code ("de_DE" for "deu"), or an empty text if the code is
// unknown.
[[nodiscard]] QString localeName(const QString &languageCode);
