// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QMap>
#include <QString>

/**
 * The words that the library's own widgets show, by key.
 *
 * The library translates nothing itself: the host installs one table for the language of its user,
 * right after it created its application object and before it creates widgets. The README of the
 * theme lists the keys. Use it from the GUI thread only.
 */
class KOVAKIT_EXPORT ComponentStrings
{
public:
    /** The one instance of the process, created by the first call and empty at first. */
    static ComponentStrings *getInstance();

    /**
     * Replaces the whole table by @p strings; nothing of an earlier table is kept.
     *
     * Widgets that exist already keep their texts, later ones take the new ones.
     */
    void installStrings(const QMap<QString, QString> &strings);

    /**
     * The text installed for @p key; keys are case-sensitive.
     *
     * Without one it logs a warning and returns the key, so that what is missing shows on screen.
     */
    [[nodiscard]] QString getString(const QString &key) const;

    /** Whether a text is installed for @p key. For words that a host may do without. */
    [[nodiscard]] bool hasString(const QString &key) const;

private:
    ComponentStrings() = default;
    Q_DISABLE_COPY(ComponentStrings)

    QMap<QString, QString> m_strings;
};
