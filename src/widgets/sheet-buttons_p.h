#pragma once

class QAbstractButton;
class QDialogButtonBox;
class QString;
class QWidget;

// What sheets and message boxes do alike with their texts and buttons.

// An empty button box; @p sheet owns it.
[[nodiscard]] QDialogButtonBox *newButtonBox(QWidget *sheet);

// Gives a standard button the text and look of the house: no icon, whatever the desktop thinks.
void dressButton(QAbstractButton *button, const QString &text, const char *styleKey);

// Gives the accept button its text and look and makes it the default button.
void dressOkButton(QDialogButtonBox *box, const QString &text);

// Gives the second button, which is QDialogButtonBox::Discard on every sheet, its text and look.
void dressSecondButton(QDialogButtonBox *box, const QString &text);

// Right-aligned buttons with the accept button first, on every platform.
void orderButtons(QDialogButtonBox *box);

// The HTML paragraph of a sheet's text, @p lineHeight in design pixels, scaled for the display.
QString sheetParagraph(const QString &text, int lineHeight);
