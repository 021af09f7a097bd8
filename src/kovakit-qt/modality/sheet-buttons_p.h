#pragma once

class QAbstractButton;
class QDialogButtonBox;
class QPushButton;
class QString;
class QWidget;

// What sheets and message boxes do alike with their texts and buttons.

// An empty button box; @p sheet owns it.
[[nodiscard]] QDialogButtonBox *newButtonBox(QWidget *sheet);

// Gives a standard button the text and look of the house: no icon, whatever the desktop thinks.
void dressButton(QAbstractButton *button, const QString &text, const char *styleKey);

// Gives the accept button its text and look and makes it the default button.
void dressOkButton(QDialogButtonBox *box, const QString &text);

// Makes @p button a default button of its sheet. A dialog around the sheet keeps its own.
void makeDefaultButton(QPushButton *button);

// Makes the buttons of @p sheet default buttons again that makeDefaultButton() made so, after a
// dialog around the sheet took the role from them.
void restoreDefaultButtons(const QWidget *sheet);

// Gives the second button, which is QDialogButtonBox::Discard on every sheet, its text and look.
void dressSecondButton(QDialogButtonBox *box, const QString &text);

// Right-aligned buttons with the accept button first, on every platform.
void orderButtons(QDialogButtonBox *box);

// The HTML paragraph of a sheet's text, @p lineHeight in design pixels, scaled for the display.
QString sheetParagraph(const QString &text, int lineHeight);
