// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/style/style-manager.h>

// The scaled style sheet of @p key, or none, without a warning, where the theme does without it.
[[nodiscard]] inline QString optionalStyleSheet(const char *key)
{
    const StyleManager *styles = StyleManager::getInstance();
    const QString name = QString::fromLatin1(key);
    return styles->hasStyleSheet(name) ? styles->getStyleSheet(name, false) : QString();
}
