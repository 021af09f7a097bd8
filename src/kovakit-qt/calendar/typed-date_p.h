// SPDX-License-Identifier: MIT

#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

// A date that is typed digit by digit, in the order in which a locale writes day, month and year.
//
// One or two digits are a day, four of them a day and a month, six or eight a whole date; points,
// strokes and dashes between the numbers do as well. A number of four digits in front is a year in
// every locale. What is not typed comes from the day to begin with, and a year of two digits is
// the one that is nearest to it.
class TypedDate
{
public:
    TypedDate(const QLocale &locale, const QDate &base);

    // Takes digits of any script, and what may stand between them; false for all else.
    bool append(const QString &text);
    void removeLast() { m_typed.chop(1); }
    [[nodiscard]] bool isEmpty() const { return m_typed.isEmpty(); }

    // Invalid if what was typed is no date, or not yet one.
    [[nodiscard]] QDate date() const;

    // The date as the locale writes it, what was typed of it in bold; or what was typed, if that is
    // no date.
    [[nodiscard]] QString toHtml() const;

private:
    // The names of the numbers that were typed, such as "dM", in the order of typing.
    [[nodiscard]] QString typedFields(const QStringList &numbers) const;
    [[nodiscard]] QStringList numbers() const;
    [[nodiscard]] int fullYear(const QString &digits) const;
    [[nodiscard]] QString localized(const QString &digits) const;

    QLocale m_locale;
    QDate m_base;
    QString m_order;
    QStringList m_separators;
    QString m_typed;
};
