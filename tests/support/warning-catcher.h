// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

// Collects the warnings of the category "debug.message" while it lives, so that a test can assert
// their texts. Other messages go on to the handler before.
class WarningCatcher
{
public:
    WarningCatcher();
    ~WarningCatcher();
    Q_DISABLE_COPY(WarningCatcher)

    // The texts since the last call, oldest first.
    QStringList take();
};
