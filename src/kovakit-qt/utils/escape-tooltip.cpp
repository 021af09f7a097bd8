// SPDX-License-Identifier: MIT

#include "escape-tooltip.h"

QString getHtmlEscapedStringForToolTip(const QString &text)
{
    const QString escaped = text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
    return QLatin1String("<p style='white-space:pre'>") + escaped + QLatin1String("</p>");
}
