// SPDX-License-Identifier: MIT

#pragma once

class QString;
class QWidget;

// Has a screen reader say @p text, as news from @p widget, wherever the focus is. Does nothing for
// an empty text and while no assistive technology runs.
void announce(QWidget *widget, const QString &text);
