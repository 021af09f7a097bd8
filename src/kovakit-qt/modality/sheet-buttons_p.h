// SPDX-License-Identifier: MIT

#pragma once

#include <QDialogButtonBox>

class QAbstractButton;
class QPushButton;
class QString;
class QWidget;

// What sheets and message boxes do alike with their texts and buttons.

// The first button of a sheet, which accepts. Its code is 1024.
constexpr QDialogButtonBox::StandardButton acceptButton = QDialogButtonBox::Ok;
// The second one, which refuses. Discard, code 8388608, is meant, though the button reads "Cancel":
// hosts compare with it. The boxes of kova-msg-box.h answer with Cancel, 4194304, instead.
constexpr QDialogButtonBox::StandardButton secondButton = QDialogButtonBox::Discard;

// An empty button box; @p sheet owns it.
[[nodiscard]] QDialogButtonBox *makeButtonBox(QWidget *sheet);

// Gives a standard button the text and look of the house: no icon, whatever the desktop thinks.
void dressButton(QAbstractButton *button, const QString &text, const char *styleKey);

// Gives the accept button its text and look and makes it the default button.
void dressOkButton(QDialogButtonBox *box, const QString &text);

// Makes @p button a default button of its sheet. A dialog around the sheet keeps its own. Null does
// nothing.
void setAsDefault(QPushButton *button);

// Makes the buttons of @p sheet default buttons again that setAsDefault() made so, after a
// dialog around the sheet took the role from them.
void restoreDefaultButtons(const QWidget *sheet);

// Gives the second button its text and look.
void dressSecondButton(QDialogButtonBox *box, const QString &text);

// Right-aligned buttons with the accept button first, on every platform.
void orderButtons(QDialogButtonBox *box);

// The HTML paragraph of a sheet's text, @p lineHeight in design pixels, scaled for the display.
QString sheetParagraph(const QString &text, int lineHeight);
