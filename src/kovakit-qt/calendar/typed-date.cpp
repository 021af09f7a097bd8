// SPDX-License-Identifier: MIT

#include "typed-date_p.h"

#include <QRegularExpression>

namespace {

constexpr int longestInput = 10;

bool isSeparator(QChar letter)
{
    return QStringLiteral("./-").contains(letter);
}

} // namespace

TypedDate::TypedDate(const QLocale &locale, const QDate &base)
    : m_locale(locale)
    , m_base(base)
{
    QString separator;
    for (const QChar letter : locale.dateFormat(QLocale::ShortFormat)) {
        if (!QStringLiteral("dMy").contains(letter)) {
            separator += letter;
        } else if (!m_order.contains(letter)) {
            m_order += letter;
            m_separators.append(separator);
            separator.clear();
        }
    }
}

bool TypedDate::append(const QString &text)
{
    QString added;
    for (const QChar letter : text) {
        if (letter.isDigit())
            added += QString::number(letter.digitValue());
        else if (isSeparator(letter))
            added += letter;
        else
            return false;
    }
    if (added.isEmpty() || (isEmpty() && isSeparator(added.at(0))))
        return false;
    m_typed = (m_typed + added).left(longestInput);
    return true;
}

QStringList TypedDate::numbers() const
{
    static const QRegularExpression separators(QStringLiteral("[./-]"));
    if (m_typed.contains(separators))
        return m_typed.split(separators);
    if (m_typed.size() < 3)
        return {m_typed};
    const int yearSize = m_typed.size() - 4;
    if (yearSize != 0 && yearSize != 2 && yearSize != 4)
        return {};
    QStringList numbers;
    int position = 0;
    for (const QChar field : m_order) {
        const int size = field == QLatin1Char('y') ? yearSize : 2;
        if (size > 0)
            numbers.append(m_typed.mid(position, size));
        position += size;
    }
    return numbers;
}

QString TypedDate::typedFields(const QStringList &numbers) const
{
    switch (numbers.size()) {
    case 1:
        return QStringLiteral("d");
    case 2:
        return QString(m_order).remove(QLatin1Char('y'));
    case 3:
        return numbers.at(0).size() == 4 ? QStringLiteral("yMd") : m_order;
    default:
        return QString();
    }
}

int TypedDate::fullYear(const QString &digits) const
{
    const int year = digits.toInt();
    if (digits.size() != 2)
        return digits.size() == 4 ? year : 0;
    const int ahead = (year - m_base.year() % 100 + 150) % 100 - 50;
    return m_base.year() + ahead;
}

QDate TypedDate::date() const
{
    const QStringList typed = numbers();
    const QString fields = typedFields(typed);
    int day = m_base.day();
    int month = m_base.month();
    int year = m_base.year();
    for (int i = 0; i < fields.size(); ++i) {
        const QString &number = typed.at(i);
        if (fields.at(i) == QLatin1Char('y'))
            year = fullYear(number);
        else if (number.isEmpty() || number.size() > 2)
            return QDate();
        else
            (fields.at(i) == QLatin1Char('M') ? month : day) = number.toInt();
    }
    return fields.isEmpty() ? QDate() : QDate(year, month, day);
}

QString TypedDate::localized(const QString &digits) const
{
    QString text;
    for (const QChar letter : digits) {
        text +=
            letter.isDigit() ? QChar(m_locale.zeroDigit().unicode() + letter.digitValue()) : letter;
    }
    return text;
}

QString TypedDate::toHtml() const
{
    const auto bold = [](const QString &text) {
        return QLatin1String("<b>") + text + QLatin1String("</b>");
    };
    const QDate date = this->date();
    if (!date.isValid())
        return bold(localized(m_typed));
    const QString fields = typedFields(numbers());
    QString html;
    for (int i = 0; i < m_order.size(); ++i) {
        const QChar field = m_order.at(i);
        const bool isYear = field == QLatin1Char('y');
        const int value = isYear                    ? date.year()
                        : field == QLatin1Char('M') ? date.month()
                                                    : date.day();
        const QString number =
            localized(QStringLiteral("%1").arg(value, isYear ? 4 : 2, 10, QLatin1Char('0')));
        if (i > 0)
            html += m_separators.at(i).toHtmlEscaped();
        html += fields.contains(field) ? bold(number) : number;
    }
    return html;
}
