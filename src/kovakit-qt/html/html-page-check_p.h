// SPDX-License-Identifier: MIT

#pragma once

#include "html-limits_p.h"

#include <QByteArray>
#include <QFont>
#include <QHash>
#include <QUrl>

#include <functional>

// Tells before a text is shown what it takes to show it. Reads it, makes a document of it that is
// never laid out, and counts in that what there is to be laid out: only Qt itself knows what it
// makes of a text.
class HtmlPageCheck
{
public:
    // What a text is shown with.
    struct Source
    {
        QUrl base;
        QString defaultStyle;
        QFont font;
        std::function<QByteArray(const QUrl &name)> readStyleSheet;
    };
    struct Result
    {
        qint64 steps = 0;
        // The style sheet files that the text may have, by name.
        QHash<QUrl, QByteArray> styleSheets;
    };

    HtmlPageCheck(const HtmlLimits &limits, Source source);

    [[nodiscard]] Result check(const QString &html) const;
    [[nodiscard]] Result checkMarkdown(const QString &text) const;

private:
    const HtmlLimits m_limits;
    const Source m_source;
};
