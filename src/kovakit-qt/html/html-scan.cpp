// SPDX-License-Identifier: MIT

#include "html-scan_p.h"

#include <QSet>

HtmlPictureSources scanPictureSources(const QString &text)
{
    const QLatin1String baseMark("<base href=\"");
    const QLatin1String pictureMark("<img");
    const QLatin1String sourceMark("src=\"");
    const QLatin1Char quote('"');

    HtmlPictureSources found;
    const int base = text.indexOf(baseMark);
    const int baseEnd = base < 0 ? -1 : text.indexOf(quote, base + baseMark.size());
    if (baseEnd < 0)
        return found;
    found.hasBase = true;
    found.baseUrl = text.mid(base + baseMark.size(), baseEnd - base - baseMark.size());

    QSet<QString> seen;
    for (int at = text.indexOf(pictureMark, baseEnd); at >= 0; at = text.indexOf(pictureMark, at)) {
        at = text.indexOf(sourceMark, at);
        if (at < 0)
            break;
        at += sourceMark.size();
        const int end = text.indexOf(quote, at);
        if (end < 0)
            break;
        const QString source = text.mid(at, end - at);
        if (!seen.contains(source)) {
            seen.insert(source);
            found.sources.append(source);
        }
    }
    return found;
}
