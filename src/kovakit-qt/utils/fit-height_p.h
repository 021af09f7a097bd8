// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

// Fixes the height of @p label at what its text needs in its present width; a label that shows no
// text keeps its height.
void fitHeightToWidth(QWidget *label);
