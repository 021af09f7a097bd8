// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Multiplies the pixel lengths of a style text; the behaviour that hosts see is described at
// DPIinfo::getScaledStyleSheet().
//
// The result is that of a search for "(\d+\.?\d*)(px)" that goes on three characters after the
// start of each match, while the text between the matches is cut at ordinary, non-overlapping ones.
// At scale 2, for example:
//
//   text      a: 1234px; b: 5px;
//   pieces    "a: "  "; b: "  ";"          the text without its two lengths
//   matches   1234px, 4px, 5px             the 4 stands three characters after the 1
//   result    a: 2468px; b: 8px;10px       a piece and a match in turn
//
// So a length of more than three characters garbles the rest of its text. Style files that exist
// are written with this in mind, so the scan below reproduces it, but in linear time: the regular
// expression takes quadratic time.
[[nodiscard]] QString scalePixelLengths(const QString &text, double scale);
