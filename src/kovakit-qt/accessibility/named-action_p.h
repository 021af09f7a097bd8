// SPDX-License-Identifier: MIT

#pragma once

class QAction;
class QMenu;
class QString;

// Gives the entry @p action of a menu, whose text is an abbreviation, a full name: as its tool tip,
// and as its name for assistive technology, which otherwise reads the text out.
void setFullName(QAction *action, const QString &name);

// Has every entry of @p menu close it when assistive technology presses the entry, as a click does.
void speakForEntries(QMenu *menu);
