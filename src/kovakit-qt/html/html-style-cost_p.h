// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

// What style sheets cost with each element that they are tried on, in nanoseconds. Qt keeps the
// rules by the name of the element they are for, and tries all others on every element; what it
// does then depends on whether the classes fit.
class HtmlStyleCost
{
public:
    // An element as style sheets see it.
    struct Element
    {
        // Its name in lower case, and its classes with a dot in front of each.
        QStringList keys;
        int attributeLength = 0; // of all its attributes together
        int depth = 0;
        double before = 0; // elements that stand before it in the text
    };

    // Adds the rules of @p css. Where it is written so that Qt may read it otherwise, all its rules
    // count for all elements.
    void add(const QString &css);

    // Of one attempt on @p element.
    [[nodiscard]] double of(const Element &element) const;

private:
    struct Rules
    {
        double each = 0;
        int withAttributes = 0;
        int forAncestors = 0;
        int forSiblings = 0;
        int forAllSiblings = 0;
    };
    void addRule(const QString &selectors, double declarations, bool isPlain);
    void addSelector(const QString &selector, double declarations, bool isPlain);
    [[nodiscard]] static double of(const Rules &rules, const Element &element);

    Rules m_universal;
    QHash<QString, Rules> m_ofKey;
};
