// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// The host's text for @p key, which is ASCII; as ComponentStrings::getString() has it.
[[nodiscard]] QString componentString(const char *key);
