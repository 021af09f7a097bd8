// SPDX-License-Identifier: MIT

#pragma once

class QObject;
class QWidget;

// What assistive technology can do with a window that a sheet holds: all that is in the sheet, and
// nothing beside it. Widgets beside it report themselves as disabled, without actions; so do menus
// and lists that open from them. Other windows are as they were.
//
// Nothing is done, and nothing costs, as long as no assistive technology is running. One that is
// started meanwhile meets the same.

// Lets assistive technology use of @p window nothing but @p sheet.
//
// The interfaces of widgets that can be used otherwise are deleted at once and replaced. A function
// of such an interface may be running, if what it did opened the sheet: none of Qt's touches its
// interface afterwards, and one of this library must not.
void holdForAssistive(QWidget *window, QWidget *sheet);

// Lets it use the window again, or what an earlier sheet leaves of it. Widgets are asked for only
// when the event loop comes round: those around the sheet may be dying.
void releaseForAssistive(const QWidget *sheet);

// Whether @p sheet holds its window, and no later one does.
[[nodiscard]] bool holdsForAssistive(const QWidget *sheet);

// Whether @p widget, or what it opens from, is under the sheet that holds its window.
[[nodiscard]] bool isCoveredForAssistive(const QWidget *widget);

// Has to be called for every widget that is shown while a window is held: it may be new there, or
// have come from there.
void noticeShownForAssistive(QObject *widget);
