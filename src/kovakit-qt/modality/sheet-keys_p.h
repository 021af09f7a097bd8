// SPDX-License-Identifier: MIT

#pragma once

class QDialogButtonBox;
class QKeyEvent;
class QWidget;

// Does what the key in @p event does when it reaches the window of @p sheet: Escape presses the
// second button in @p box, Return, Enter and Space the focused button of the sheet or else Ok, a
// mnemonic its own. Any other key does nothing. The sheet may be gone afterwards.
void pressSheetKey(const QWidget *sheet, const QDialogButtonBox *box, const QKeyEvent *event);
