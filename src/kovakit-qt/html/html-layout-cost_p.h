// SPDX-License-Identifier: MIT

#pragma once

#include "html-limits_p.h"

class QTextDocument;

// Adds to @p budget what it takes Qt to lay out @p document, which has not been laid out, in a
// window of ordinary width. Stops at the first excess.
void chargeLayout(HtmlBudget &budget, const QTextDocument &document);
