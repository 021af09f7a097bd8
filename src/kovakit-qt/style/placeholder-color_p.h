// SPDX-License-Identifier: MIT

#pragma once

class QComboBox;
class QString;
class QStyleOptionComboBox;
class QWidget;

// Shows the placeholder of @p field weaker than its text, also after a style sheet has given both
// the same colour, as every sheet with a colour for the text does. Takes the colour from the
// application's palette if the host has set one there, or else mixes it from text and ground. A
// colour of the field's own stays.
void setPlaceholderApart(QWidget *field);

// Draws @p box, its arrow from all the pixels of the device, with its current text or, if there is
// one, with @p placeholder in the colour of placeholders. A style sheet would have the box's own
// painting use the colour of texts.
void paintComboBox(QComboBox *box, const QStyleOptionComboBox &option, const QString &placeholder);
