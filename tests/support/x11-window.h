// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>
#include <QWindow>

// The five items of the window's Motif hints as the window manager sees them; empty if it has none.
QVector<quint32> readMotifHints(WId window);

// Replaces the window's Motif hints; no items removes them.
void writeMotifHints(WId window, const QVector<quint32> &items);
