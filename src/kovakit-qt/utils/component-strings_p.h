// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// The host's text for @p key, which is ASCII; as ComponentStrings::getString() has it.
[[nodiscard]] QString componentString(const char *key);

// The host's text for @p key, or @p substitute if it has none, without a warning. For words that a
// host may do without.
[[nodiscard]] QString componentString(const char *key, const char *substitute);
