// SPDX-License-Identifier: MIT

#pragma once

#include <QMessageBox>

// What the picture of a message with @p icon says, for those who do not see it: "Warning". Empty
// for no icon, and where the host has no words for it.
[[nodiscard]] QString severityName(QMessageBox::Icon icon);

// Names the icon of @p box in this way, and describes the box by it unless the host did.
void nameIcon(QMessageBox *box);
