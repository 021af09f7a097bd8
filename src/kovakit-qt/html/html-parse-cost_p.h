// SPDX-License-Identifier: MIT

#pragma once

#include "html-limits_p.h"

#include <QHash>

// What it takes Qt to read a text and to make a document of it, with all that has to be known
// before Qt may begin.
class HtmlParseCost
{
public:
    // Adds the cost of @p html to @p budget, in which a host's own style sheet @p defaultStyle
    // counts as well. Stops at the first excess.
    HtmlParseCost(HtmlBudget &budget, const QString &html, const QString &defaultStyle);

    // What a style sheet file that reads @p css adds to it, in nanoseconds.
    [[nodiscard]] double ofStyleSheet(const QString &css) const;

private:
    friend class HtmlParseScan;
    // How often style rules are tried on elements with a name or class: once for each element
    // itself, and once more for each element inside it.
    QHash<QString, double> m_attempts;
    double m_allAttempts = 0;
    double m_elements = 0;
    int m_depth = 0;
    int m_attributeLength = 0;
};
