// SPDX-License-Identifier: MIT

#pragma once

class QString;

// The words of a label's text, without markup if it has any.
[[nodiscard]] QString withoutMarkup(const QString &text);
