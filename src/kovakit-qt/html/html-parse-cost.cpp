// SPDX-License-Identifier: MIT

#include "html-parse-cost_p.h"

#include "html-grid_p.h"
#include "html-style-cost_p.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

namespace {

// Nanoseconds, each of them twice: a text is read to learn what its layout costs, and to show it.
constexpr double costOfCharacter = 2 * 60;
constexpr double costOfStyleCharacter = 2 * 100;
constexpr double costOfElement = 2 * 1500;
constexpr double costOfOpenElement = 2 * 12;
constexpr double costOfListItem = 2 * 18;
// A picture has Qt look through its paragraph.
constexpr double costOfPictureInText = 2 * 70;
// Names of places and pictures behind the text make formats that Qt compares with all others.
constexpr double costOfOddFormat = 2 * 22;
// Qt asks the system for its name each time.
constexpr double costOfFixedFont = 2 * 50000;
// Here a slot costs a tenth of that, but no grid gets through whose layout does not.
constexpr double costOfSlot = 20000;

constexpr int maxColumnSpan = 20480;

using Names = QSet<QString>;

Names names(const char *list)
{
    const QStringList parts = QString::fromLatin1(list).split(QLatin1Char(' '));
    return Names(parts.begin(), parts.end());
}

bool isEmptyElement(const QString &name)
{
    static const Names empty = names("br hr img meta");
    return empty.contains(name);
}

bool isHiding(const QString &name)
{
    static const Names hiding = names("head link meta script style title");
    return hiding.contains(name);
}

bool isBlock(const QString &name)
{
    static const Names blocks = names("blockquote body caption center dd div dl dt h1 h2 h3 h4 h5 "
                                      "h6 hr li ol p pre td th ul");
    return blocks.contains(name);
}

bool isOfFixedWidth(const QString &name)
{
    static const Names fixed = names("code tt kbd samp pre");
    return fixed.contains(name);
}

bool isCell(const QString &name)
{
    return name == QLatin1String("td") || name == QLatin1String("th");
}

bool isTablePart(const QString &name)
{
    static const Names parts = names("table thead tbody tfoot tr");
    return parts.contains(name);
}

bool mayBeIn(const QString &name, const QString &parent)
{
    static const Names ofTable = names("table");
    static const Names ofRow = names("tr");
    static const Names ofList = names("dl");
    static const QHash<QString, Names> parents = {
        {QStringLiteral("dd"), ofList},
        {QStringLiteral("dt"), ofList},
        {QStringLiteral("tr"), names("table thead tbody tfoot")},
        {QStringLiteral("td"), ofRow},
        {QStringLiteral("th"), ofRow},
        {QStringLiteral("thead"), ofTable},
        {QStringLiteral("tbody"), ofTable},
        {QStringLiteral("tfoot"), ofTable},
        {QStringLiteral("caption"), ofTable},
    };
    if (name == QLatin1String("body"))
        return parent != QLatin1String("head");
    const auto found = parents.constFind(name);
    return found == parents.cend() || found->contains(parent);
}

} // namespace

// Walks through a text in the steps of Qt's own reader, with the same elements open at each of
// them, so that no way of writing hides anything.
class HtmlParseScan
{
public:
    HtmlParseScan(HtmlParseCost &cost, HtmlBudget &budget, const QString &html)
        : m_cost(cost)
        , m_budget(budget)
        , m_text(html)
    {
    }

    void run(const QString &defaultStyle);

private:
    struct Open
    {
        QString name;
        HtmlStyleCost::Element styled;
        double chain; // of trying all style rules on this one and those around it
        int grid; // of the table that this one is part of; -1 if of none
        bool isHidden;
        bool isBlock;
    };
    struct Tag
    {
        QString name;
        QStringList classes;
        int attributeLength = 0;
        int rowSpan = 1;
        int columnSpan = 1;
    };

    [[nodiscard]] bool atChar(char c) const
    {
        return m_at < m_text.size() && m_text.at(m_at) == QLatin1Char(c);
    }
    void skipSpace();
    void skipPast(QLatin1String mark);
    QChar readChar();
    QString readWord();
    QString readQuoted();
    void readTag();
    void readDeclaration();
    void readAttributes(Tag &tag);
    void applyAttribute(Tag &tag, const QString &key, const QString &value);
    void readText();

    [[nodiscard]] bool isOpen(const char *name) const;
    [[nodiscard]] bool isHidden() const { return !m_open.isEmpty() && m_open.last().isHidden; }
    [[nodiscard]] bool isInStyle() const
    {
        return !m_open.isEmpty() && m_open.last().name == QLatin1String("style");
    }
    void open(const Tag &tag, bool isClosed);
    void findParent(const QString &name);
    void push(const Tag &tag);
    void pushImplied(const QString &name);
    void pop();
    void close(const QString &name);
    int placeInGrid(const Tag &tag);
    void addStyle(const QString &css);
    double chainWith(const HtmlStyleCost::Element &element) const;
    void chargeContent(const QString &name);

    HtmlParseCost &m_cost;
    HtmlBudget &m_budget;
    QString m_text;
    int m_at = 0;
    QVector<Open> m_open;
    QVector<HtmlGrid> m_grids;
    HtmlStyleCost m_style;
    QString m_styleText;
    double m_paragraph = 0; // characters and pictures
    double m_listItems = 0;
    double m_oddFormats = 0;
    bool mayShareCells = false;
};

void HtmlParseScan::run(const QString &defaultStyle)
{
    // Where this stands, Qt reads nothing else.
    const int fragment = m_text.indexOf(QLatin1String("<!--StartFragment-->"));
    if (fragment >= 0)
        m_text.remove(0, fragment);

    m_budget.charge(m_text.size() * costOfCharacter);
    if (!defaultStyle.isEmpty())
        addStyle(defaultStyle);
    while (m_budget.isKept() && m_at < m_text.size()) {
        if (atChar('<'))
            readTag();
        else
            readText();
    }
    while (!m_open.isEmpty())
        pop();
}

void HtmlParseScan::readText()
{
    ++m_paragraph;
    if (isInStyle())
        m_styleText += readChar();
    else
        ++m_at;
}

void HtmlParseScan::skipSpace()
{
    while (m_at < m_text.size() && m_text.at(m_at).isSpace()
           && m_text.at(m_at) != QChar::ParagraphSeparator)
        ++m_at;
}

void HtmlParseScan::skipPast(QLatin1String mark)
{
    const int found = m_text.indexOf(mark, m_at);
    m_at = found < 0 ? m_text.size() : found + mark.size();
}

// The next character, or the one that an entity with a number stands for. Those with a name stand
// for nothing that tags or style sheets are made of.
QChar HtmlParseScan::readChar()
{
    constexpr int longestEntity = 9;
    const QChar c = m_text.at(m_at++);
    if (c != QLatin1Char('&') || !atChar('#'))
        return c;
    // The end of the text ends an entity, too.
    const QString entity = m_text.mid(m_at, longestEntity);
    int end = entity.indexOf(QLatin1Char(';'));
    if (end < 0 && m_at + entity.size() == m_text.size())
        end = entity.size();
    const QString number = entity.mid(1, qMax(0, end - 1));
    const bool isHex = number.startsWith(QLatin1Char('x'), Qt::CaseInsensitive);
    bool isNumber = false;
    const uint code = number.mid(isHex ? 1 : 0).toUInt(&isNumber, isHex ? 16 : 10);
    if (!isNumber || number.simplified().size() != number.size())
        return c;
    m_at = qMin(m_at + end + 1, m_text.size());
    return code > 0xFFFF ? QChar(QChar::ReplacementCharacter) : QChar(ushort(code));
}

QString HtmlParseScan::readQuoted()
{
    const QChar quote = m_text.at(m_at++);
    const bool isSingle = quote == QLatin1Char('\'');
    QString word;
    while (m_at < m_text.size()) {
        const QChar c = m_text.at(m_at);
        if (c == quote && !(isSingle && m_text.at(m_at - 1) == QLatin1Char('\\'))) {
            ++m_at;
            break;
        }
        if (isSingle)
            ++m_at;
        word += isSingle ? c : readChar();
    }
    return word;
}

QString HtmlParseScan::readWord()
{
    if (atChar('"') || atChar('\''))
        return readQuoted();
    QString word;
    while (m_at < m_text.size()) {
        const QChar c = m_text.at(m_at);
        const bool isEnd = c == QLatin1Char('>') || c == QLatin1Char('<') || c == QLatin1Char('=')
                        || c.isSpace()
                        || (c == QLatin1Char('/') && m_at + 2 < m_text.size()
                            && m_text.at(m_at + 1) == QLatin1Char('>'));
        if (isEnd)
            break;
        word += readChar();
    }
    return word;
}

// A single dash is enough to begin a comment.
void HtmlParseScan::readDeclaration()
{
    const bool isComment = atChar('-') && m_at + 2 < m_text.size();
    if (isComment)
        m_at += 3;
    skipPast(isComment ? QLatin1String("-->") : QLatin1String(">"));
}

void HtmlParseScan::readTag()
{
    ++m_at;
    skipSpace();
    if (atChar('!')) {
        ++m_at;
        readDeclaration();
        return;
    }
    if (atChar('/')) {
        // Whatever it is that closes: Qt reads the style rules until here, again.
        if (isInStyle())
            addStyle(m_styleText);
        ++m_at;
        const QString name = readWord().toLower().trimmed();
        skipPast(QLatin1String(">"));
        close(name);
        return;
    }
    Tag tag;
    tag.name = readWord().toLower();
    if (m_at < m_text.size() && m_text.at(m_at).isSpace())
        readAttributes(tag);
    const int end = m_text.indexOf(QLatin1Char('>'), m_at);
    const QStringView rest = QStringView(m_text).mid(m_at, (end < 0 ? m_text.size() : end) - m_at);
    m_at += int(rest.size()) + 1;
    open(tag, rest.contains(QLatin1Char('/')));
}

void HtmlParseScan::readAttributes(Tag &tag)
{
    while (m_at < m_text.size()) {
        skipSpace();
        if (atChar('>') || atChar('/'))
            return;
        const QString key = readWord().toLower();
        if (key.isEmpty())
            return;
        skipSpace();
        if (!atChar('='))
            continue;
        ++m_at;
        skipSpace();
        const QString value = readWord();
        applyAttribute(tag, key, value);
    }
}

void HtmlParseScan::applyAttribute(Tag &tag, const QString &key, const QString &value)
{
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    tag.attributeLength += key.size() + value.size();
    if (isNumber && key == QLatin1String("colspan"))
        tag.columnSpan = qBound(1, number, maxColumnSpan);
    else if (isNumber && key == QLatin1String("rowspan"))
        tag.rowSpan = qMax(1, number);
    else if (key == QLatin1String("class"))
        for (const QString &name : value.split(QLatin1Char(' ')))
            tag.classes.append(QLatin1Char('.') + name);
    const bool isStyle = key == QLatin1String("style");
    // A table can be told to be none, and a style can be written in numbers.
    mayShareCells |= isStyle
                  && (value.contains(QLatin1String("-qt-"), Qt::CaseInsensitive)
                      || value.contains(QLatin1Char('\\')));
    if (key == QLatin1String("id") || key == QLatin1String("name")
        || key == QLatin1String("background")
        || (isStyle && value.contains(QLatin1String("background"), Qt::CaseInsensitive)))
        m_budget.charge(++m_oddFormats * costOfOddFormat);
}

bool HtmlParseScan::isOpen(const char *name) const
{
    const QLatin1String wanted(name);
    return std::any_of(m_open.crbegin(), m_open.crend(),
                       [wanted](const Open &open) { return open.name == wanted; });
}

void HtmlParseScan::open(const Tag &tag, bool isClosed)
{
    const QString &name = tag.name;
    if (name == QLatin1String("td") && !isOpen("tr")) {
        pushImplied(QStringLiteral("table"));
        pushImplied(QStringLiteral("tr"));
    } else if (name == QLatin1String("tr") && !isOpen("table")) {
        pushImplied(QStringLiteral("table"));
    }
    findParent(name);
    // Qt counts the next part of the table once more for each tag without a name in front of it.
    if (name.isEmpty() && !m_open.isEmpty() && isTablePart(m_open.last().name))
        m_budget.exceed();
    push(tag);
    chargeContent(name);
    // What has no name has nothing inside.
    if (isClosed || isEmptyElement(name) || name.isEmpty())
        pop();
    if (m_open.size() > m_budget.limits().openElements)
        m_budget.exceed();
}

// Ends the open elements that cannot be around @p name.
void HtmlParseScan::findParent(const QString &name)
{
    const bool isParagraph = name == QLatin1String("p");
    if (isParagraph) {
        int parent = m_open.size();
        while (parent > 0 && !m_open.at(parent - 1).isBlock)
            --parent;
        if (parent > 0 && m_open.at(parent - 1).name == name) {
            while (m_open.size() > parent)
                pop();
        }
    }
    if ((isParagraph || name == QLatin1String("li")) && !m_open.isEmpty()
        && m_open.last().name == name)
        pop();
    while (!m_open.isEmpty() && !mayBeIn(name, m_open.last().name))
        pop();
}

void HtmlParseScan::push(const Tag &tag)
{
    ++m_cost.m_elements;
    Open open;
    open.name = tag.name;
    open.isHidden = isHidden() || isHiding(tag.name);
    open.isBlock = !open.isHidden && isBlock(tag.name);
    open.styled = {QStringList(tag.name) + tag.classes, tag.attributeLength, m_open.size(),
                   m_cost.m_elements};
    open.chain = chainWith(open.styled);
    open.grid = placeInGrid(tag);
    m_open.append(open);
    m_cost.m_depth = qMax(m_cost.m_depth, m_open.size());
    m_cost.m_attributeLength = qMax(m_cost.m_attributeLength, tag.attributeLength);
    m_budget.charge(costOfElement + m_open.size() * costOfOpenElement + 2 * open.chain);
}

void HtmlParseScan::pushImplied(const QString &name)
{
    Tag tag;
    tag.name = name;
    push(tag);
    // Even within what is hidden.
    m_open.last().isHidden = false;
}

void HtmlParseScan::pop()
{
    const Open closed = m_open.takeLast();
    for (const QString &key : closed.styled.keys)
        m_cost.m_attempts[key] += m_cost.m_elements - closed.styled.before + 1;
    m_cost.m_allAttempts += m_cost.m_elements - closed.styled.before + 1;
}

void HtmlParseScan::close(const QString &name)
{
    m_budget.charge(m_open.size() * costOfOpenElement);
    const auto found = std::find_if(m_open.crbegin(), m_open.crend(),
                                    [&name](const Open &open) { return open.name == name; });
    for (auto left = found == m_open.crend() ? 0 : found - m_open.crbegin() + 1; left > 0; --left)
        pop();
}

int HtmlParseScan::placeInGrid(const Tag &tag)
{
    if (tag.name == QLatin1String("table")) {
        // Qt loses count of the tables where one is hidden.
        mayShareCells |= isHidden();
        m_grids.append(HtmlGrid());
        return m_grids.size() - 1;
    }
    const bool isRow = tag.name == QLatin1String("tr");
    const bool isPart = isTablePart(tag.name) || isCell(tag.name);
    const int grid = isPart && !m_open.isEmpty() ? m_open.last().grid : -1;
    if (grid < 0 || (!isRow && !isCell(tag.name)))
        return grid;
    HtmlGrid &table = m_grids[grid];
    const qint64 before = table.slotCount();
    if (isRow)
        table.addRow();
    else
        table.addCell(tag.rowSpan, tag.columnSpan, int(m_budget.limits().layoutSteps / 10));
    m_budget.charge(double(table.slotCount() - before) * costOfSlot);
    mayShareCells |= table.hasOverlap();
    return isRow ? grid : -1;
}

void HtmlParseScan::addStyle(const QString &css)
{
    m_budget.charge(css.size() * costOfStyleCharacter);
    m_style.add(css);
    mayShareCells |=
        css.contains(QLatin1String("-qt-"), Qt::CaseInsensitive) || css.contains(QLatin1Char('\\'));
    const QVector<Open> open = std::exchange(m_open, {});
    for (Open element : open) {
        element.chain = chainWith(element.styled);
        m_open.append(element);
    }
}

double HtmlParseScan::chainWith(const HtmlStyleCost::Element &element) const
{
    return (m_open.isEmpty() ? 0 : m_open.last().chain) + m_style.of(element);
}

void HtmlParseScan::chargeContent(const QString &name)
{
    if (name == QLatin1String("li"))
        m_budget.charge(++m_listItems * costOfListItem);
    if (name == QLatin1String("img"))
        m_budget.charge(++m_paragraph * costOfPictureInText);
    if (isOfFixedWidth(name))
        m_budget.charge(costOfFixedFont);
    if (name == QLatin1String("style"))
        m_styleText.clear();
    // Nothing else is sure to begin a paragraph of its own.
    if (m_open.last().isBlock && !(mayShareCells && isCell(name)))
        m_paragraph = 0;
}

HtmlParseCost::HtmlParseCost(HtmlBudget &budget, const QString &html, const QString &defaultStyle)
{
    if (html.size() > budget.limits().textLength)
        budget.exceed();
    else
        HtmlParseScan(*this, budget, html).run(defaultStyle);
}

double HtmlParseCost::ofStyleSheet(const QString &css) const
{
    HtmlStyleCost style;
    style.add(css);
    HtmlStyleCost::Element element = {{}, m_attributeLength, m_depth, m_elements};
    const double ofAny = style.of(element);
    double cost = css.size() * costOfStyleCharacter + 2 * m_allAttempts * ofAny;
    for (auto it = m_attempts.cbegin(); it != m_attempts.cend(); ++it) {
        element.keys = QStringList(it.key());
        cost += 2 * it.value() * (style.of(element) - ofAny);
    }
    return cost;
}
