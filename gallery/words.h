// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QTranslator>

// The gallery's own words in a language: what stands in English in tr() is looked up in
// words/LANGUAGE.json, an object from the English text to its translation. What is not there, and a
// language without such a file, stays English. An English text means the same wherever it stands.
//
// Install it before the window is made.
class GalleryWords : public QTranslator
{
    Q_OBJECT

public:
    explicit GalleryWords(const QString &languageCode);

    [[nodiscard]] bool isEmpty() const override { return m_words.isEmpty(); }
    [[nodiscard]] QString translate(const char *context, const char *sourceText,
                                    const char *disambiguation, int n) const override;

private:
    QHash<QString, QString> m_words;
};
