// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/widgets/kova-msg-sheet.h>

/**
 * @file
 * Messages and questions in one call.
 *
 * Each function blocks until the user has answered. With a parent widget the message is a
 * KovaMessageSheet inside the parent's window, which has no title bar and so does not show the
 * title. Without one, and while the parent's window is not shown, as in the constructor of a main
 * window, it is a styled QMessageBox of its own. Destroying the parent's window ends the sheet; a
 * question then returns 0. Escape dismisses every box, but no sheet with one button.
 *
 * The severity is heard too, see KovaMessageSheet; a box has it as its description.
 *
 * The mask of each sheet stays in the window, hidden and empty; KovaMask::setDeletionPolicy()
 * clears it away.
 */

/** Tells the user @p text. */
KOVAKIT_EXPORT void showInfoMsg(const QString &title, const QString &text, QWidget *parent);

/** Warns the user with @p text. */
KOVAKIT_EXPORT void showWarningMsg(const QString &title, const QString &text, QWidget *parent);

/** Warns the user with @p text and, below it, @p informativeText. */
KOVAKIT_EXPORT void showWarningMsg(const QString &title, const QString &text,
                                   const QString &informativeText, QWidget *parent);

/**
 * Asks the user @p text, with "ok" and "cancel" in the installed language.
 *
 * Returns QMessageBox::Ok (1024) for yes. The codes for no differ: QMessageBox::Discard (8388608)
 * from a sheet, QMessageBox::Cancel (4194304) from a box, 0 from a sheet that was ended otherwise.
 * Test for QMessageBox::Ok only.
 */
[[nodiscard]] KOVAKIT_EXPORT int showConfirmMsg(const QString &title, const QString &text,
                                                QWidget *parent);

/** Asks the user @p text with buttons named by @p buttonText; returns as showConfirmMsg() does. */
[[nodiscard]] KOVAKIT_EXPORT int showConfirmMsgCustomBtn(const QString &title, const QString &text,
                                                         const MsgBoxCustomBtnText &buttonText,
                                                         QWidget *parent);

/**
 * Offers an upgrade with @p text.
 *
 * The sheet has the information icon and two buttons, the box the warning icon and Ok alone; what
 * the user pressed is not reported.
 */
KOVAKIT_EXPORT void showUpgradingMsg(const QString &title, const QString &text, QWidget *parent);
