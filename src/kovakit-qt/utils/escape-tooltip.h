// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

/**
 * @p text, plain text, as rich text for a tooltip that shows it character for character.
 *
 * Line breaks and runs of blanks are kept, and nothing in the text is taken for markup. A tooltip
 * of such text does not wrap. Carriage returns are left as they are.
 */
[[nodiscard]] KOVAKIT_EXPORT QString getHtmlEscapedStringForToolTip(const QString &text);
