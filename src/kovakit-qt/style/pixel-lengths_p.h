#pragma once

#include <QString>

// Multiplies the pixel lengths of a style text; the behaviour that hosts see is described at
// DPIinfo::getScaledStyleSheet().
//
// The result is that of a search for "(\d+\.?\d*)(px)" that goes on three characters after the
// start of each match, the text between the matches being cut at ordinary, non-overlapping ones.
// That step of three is what garbles long numbers. It is part of the contract with existing style
// files, so this scan reproduces it, without the regular expression's quadratic time.
[[nodiscard]] QString scalePixelLengths(const QString &text, double scale);
