// SPDX-License-Identifier: MIT

#include "html-limits_p.h"

#include <QHash>
#include <QSet>
#include <QStringList>

namespace {

// Chinese, Japanese and Korean break anywhere.
constexpr ushort firstIdeograph = 0x2E80;
constexpr int pictureWeight = 4;
// A style sheet in a file of its own counts as that many rules.
constexpr int rulesOfStyleSheet = 800;

using Names = QSet<QString>;

Names names(const char *list)
{
    const QStringList parts = QString::fromLatin1(list).split(QLatin1Char(' '));
    return Names(parts.begin(), parts.end());
}

bool isEmptyElement(const QString &name)
{
    static const Names empty = names("area base br col frame hr img input link meta param");
    return empty.contains(name);
}

bool breaksLine(const QString &name)
{
    static const Names breaking =
        names("address blockquote body br center dd div dl dt h1 h2 h3 h4 h5 h6 hr li ol p pre "
              "table tbody td tfoot th thead tr ul");
    return breaking.contains(name);
}

// The open elements that a new one ends, although nothing closes them.
bool endsOpenElement(const QString &opened, const QString &open)
{
    static const QHash<QString, Names> ended = {
        {QStringLiteral("p"), names("p")},
        {QStringLiteral("li"), names("li")},
        {QStringLiteral("dd"), names("dd dt")},
        {QStringLiteral("dt"), names("dd dt")},
        {QStringLiteral("td"), names("td th p")},
        {QStringLiteral("th"), names("td th p")},
        {QStringLiteral("tr"), names("tr td th p")},
        {QStringLiteral("tbody"), names("thead tbody tfoot tr td th p")},
        {QStringLiteral("thead"), names("thead tbody tfoot tr td th p")},
        {QStringLiteral("tfoot"), names("thead tbody tfoot tr td th p")},
    };
    return ended.value(opened).contains(open);
}

// Walks through a text in the steps of Qt's own reader, and stops at the first excess.
class LimitCheck
{
public:
    LimitCheck(const QString &html, const HtmlLimits &limits)
        : m_text(html)
        , m_limits(limits)
    {
    }

    bool run()
    {
        while (m_isWithin && m_at < m_text.size()) {
            const QChar c = m_text.at(m_at++);
            if (c == QLatin1Char('<'))
                readTag();
            else if (c.isSpace() || c.unicode() >= firstIdeograph)
                m_word = 0;
            else
                addLetter(c);
        }
        return m_isWithin;
    }

private:
    bool atChar(char c) const { return m_at < m_text.size() && m_text.at(m_at) == QLatin1Char(c); }

    void skipSpace()
    {
        while (m_at < m_text.size() && m_text.at(m_at).isSpace())
            ++m_at;
    }

    void skipPast(QLatin1String mark)
    {
        const int found = m_text.indexOf(mark, m_at);
        m_at = found < 0 ? m_text.size() : found + mark.size();
    }

    QString readWord()
    {
        const int begin = m_at;
        if (atChar('"') || atChar('\'')) {
            const QChar quote = m_text.at(m_at++);
            while (m_at < m_text.size()) {
                const QChar c = m_text.at(m_at++);
                const bool isEscaped =
                    quote == QLatin1Char('\'') && m_text.at(m_at - 2) == QLatin1Char('\\');
                if (c == quote && !isEscaped)
                    return m_text.mid(begin + 1, m_at - begin - 2);
            }
            return m_text.mid(begin + 1);
        }
        while (m_at < m_text.size()) {
            const QChar c = m_text.at(m_at);
            const bool isEnd = c == QLatin1Char('>') || c == QLatin1Char('<')
                            || c == QLatin1Char('=') || c.isSpace()
                            || (c == QLatin1Char('/')
                                && QStringView(m_text).mid(m_at + 1, 1) == QLatin1String(">"));
            if (isEnd)
                break;
            ++m_at;
        }
        return m_text.mid(begin, m_at - begin);
    }

    void readTag()
    {
        skipSpace();
        if (atChar('!')) {
            ++m_at;
            skipPast(QStringView(m_text).mid(m_at, 2) == QLatin1String("--") ? QLatin1String("-->")
                                                                             : QLatin1String(">"));
            return;
        }
        if (atChar('/')) {
            ++m_at;
            const QString name = readWord().toLower();
            skipPast(QLatin1String(">"));
            close(name);
            return;
        }
        const QString name = readWord().toLower();
        if (m_at < m_text.size() && m_text.at(m_at).isSpace())
            readAttributes();
        bool isClosed = false;
        while (m_at < m_text.size() && m_text.at(m_at) != QLatin1Char('>'))
            isClosed |= m_text.at(m_at++) == QLatin1Char('/');
        ++m_at;

        ++m_elements;
        addStyleRules(name == QLatin1String("link") ? rulesOfStyleSheet : 0);
        if (name == QLatin1String("li"))
            m_isWithin &= ++m_listItems <= m_limits.listItems;
        if (breaksLine(name))
            m_word = 0;
        else if (name == QLatin1String("img"))
            addToWord(pictureWeight);
        if (!isClosed && !isEmptyElement(name))
            open(name);
    }

    void readAttributes()
    {
        while (m_at < m_text.size()) {
            skipSpace();
            if (atChar('>') || atChar('/'))
                return;
            const QString key = readWord();
            if (key.isEmpty())
                return;
            skipSpace();
            if (!atChar('='))
                continue;
            ++m_at;
            skipSpace();
            const QString value = readWord();
            if (key.compare(QLatin1String("colspan"), Qt::CaseInsensitive) == 0)
                addColumns(value.toInt());
        }
    }

    void open(const QString &name)
    {
        while (!m_open.isEmpty() && endsOpenElement(name, m_open.last()))
            closeLast();
        m_open.append(name);
        const int same = ++m_openCount[name];
        m_isWithin &= m_open.size() <= m_limits.openElements
                   && (name != QLatin1String("table") || same <= m_limits.openTables);
    }

    void close(const QString &name)
    {
        if (breaksLine(name))
            m_word = 0;
        if (m_openCount.value(name) == 0)
            return;
        while (m_open.last() != name)
            closeLast();
        closeLast();
    }

    void closeLast() { --m_openCount[m_open.takeLast()]; }

    void addLetter(QChar c)
    {
        addToWord(1);
        if (c == QLatin1Char('{'))
            addStyleRules(1);
        else if (c == QLatin1Char('@') && !m_open.isEmpty()
                 && m_open.last() == QLatin1String("style"))
            addStyleRules(rulesOfStyleSheet);
    }

    void addStyleRules(int count)
    {
        m_rules += count;
        m_isWithin &= m_rules * m_elements <= m_limits.styleSteps;
    }

    void addToWord(int letters)
    {
        m_word += letters;
        m_isWithin &= m_word <= m_limits.wordLength;
    }

    void addColumns(int count)
    {
        m_columns += count > 1 ? count : 0;
        m_isWithin &= m_columns <= m_limits.spannedColumns;
    }

    const QString &m_text;
    const HtmlLimits &m_limits;
    int m_at = 0;
    bool m_isWithin = true;
    int m_word = 0;
    int m_listItems = 0;
    qint64 m_columns = 0;
    qint64 m_elements = 0;
    qint64 m_rules = 0;
    QStringList m_open;
    QHash<QString, int> m_openCount;
};

} // namespace

bool isWithinLimits(const QString &html, const HtmlLimits &limits)
{
    return html.size() <= limits.textLength && LimitCheck(html, limits).run();
}

QString shownPlain(const QString &text, const HtmlLimits &limits)
{
    QString shown;
    shown.reserve(qMin(text.size(), limits.textLength));
    int word = 0;
    for (const QChar c : text) {
        const bool isPlaceToBreak = c.isSpace() || c.unicode() >= firstIdeograph;
        word = isPlaceToBreak ? 0 : word + 1;
        const int lineFeeds = word > limits.wordLength ? 1 : 0;
        if (shown.size() + lineFeeds >= limits.textLength)
            return shown + QChar(0x2026);
        if (lineFeeds > 0) {
            shown.append(QLatin1Char('\n'));
            word = 1;
        }
        shown.append(c);
    }
    return shown;
}
