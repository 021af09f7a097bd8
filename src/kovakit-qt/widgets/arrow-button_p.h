// SPDX-License-Identifier: MIT

#pragma once

class KovaIconButton;
class QString;

// Shows the picture @p image on @p button, or @p mirrored where its layout runs from right to left.
void showArrow(KovaIconButton *button, const char *image, const char *mirrored);

// Gives @p button, which shows a picture alone, the tooltip @p words, and the same as its name for
// assistive technology.
void nameButton(KovaIconButton *button, const QString &words);
