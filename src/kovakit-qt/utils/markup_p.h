// SPDX-License-Identifier: MIT

#pragma once

class QString;

// The words of a label's text, without markup if it has any.
[[nodiscard]] QString withoutMarkup(const QString &text);

// The words of a button's text, without the ampersands that mark its shortcut.
[[nodiscard]] QString withoutMnemonics(const QString &text);
