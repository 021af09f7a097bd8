// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/utils/accessible-util.h>

#include <QList>
#include <QLoggingCategory>
#include <QtGlobal>

class QWidget;

/**
 * The logging category "debug.message" that carries every diagnostic of the library.
 *
 * All of them are warnings: a fixed English phrase followed by the offending argument in Qt's
 * quoted form. The category exists from the moment the library is loaded; silence it with the
 * usual filter rules ("debug.message.warning=false").
 */
KOVAKIT_EXPORT const QLoggingCategory &debug_message();

/** Gives every widget of @p widgets the focus policy @p policy, in the order of the list. */
KOVAKIT_EXPORT void adjustFocusPolicy(Qt::FocusPolicy policy, QList<QWidget *> widgets);
