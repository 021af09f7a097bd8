// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/widgets/kova-sheet.h>

#include <QMessageBox>

class KovaMessageSheetPrivate;
class QAbstractButton;
class QPushButton;

/** The texts of a sheet's two buttons; an empty one stands for the default text. */
struct MsgBoxCustomBtnText
{
    QString okText; ///< Text of the accept button.
    QString cancelText; ///< Text of the second button.
};

/**
 * A message or a question inside the window: an icon, a text, an informative text, up to two
 * buttons.
 *
 * The in-window replacement of a QMessageBox. For the usual messages call the functions of
 * kova-msg-box.h, which need no more than a line. To use the class itself, build a sheet, put it
 * over a window with KovaMask::createMask() and call exec(), or showSheet() and wait for
 * finished().
 *
 * While a sheet is up it is modal: keys, clicks and shortcuts do not reach the rest of the window,
 * popups that are open close, and the focus stays in the sheet. Escape presses the second button
 * and does nothing on a sheet with one button; Return, Enter and Space the focused button or else
 * the accept button. The sheet can be answered though its window or a widget between is disabled,
 * before or meanwhile; their state stays what the host made it. A dialog below the sheet keeps its
 * default button. When the run ends, the focus returns to the widget that had it, or goes to the
 * next one if that cannot take it any more.
 *
 * The result is one of:
 * - QMessageBox::Ok (1024): the user pressed the accept button.
 * - QMessageBox::Discard (8388608): the user pressed the second button. This code is meant, though
 *   the button reads "cancel".
 * - 0: the host called quit(); the sheet or its window was deleted; the application quits; or the
 *   sheet was hidden for good.
 *
 * A sheet is hidden for good when it has been out of sight for a tenth of a second, because the
 * host hid or closed the sheet, its mask, a widget between or the window, called QDialog::done(),
 * or turned the page of a stack. A host that shows the sheet again before that does not end it, nor
 * does a user who minimises the window.
 *
 * A widget that carries the sheet and is moved into another window with setParent() takes the hold
 * along: the old window is free, the new one is held. Show the widget again, which setParent()
 * hides.
 *
 * The width follows that of the parent widget: 40 design pixels less, at most 540, and 480 where
 * the parent has exactly 540. It is never less than buttons, icon and the longest word need, never
 * more than the window has, and follows both when the window is resized. Where the window is too
 * narrow the buttons stand below each other; a text that is too high for it scrolls, by wheel and
 * by Up, Down, Page Up and Page Down, and the buttons stay in sight. Texts are rich text. The host
 * must have loaded pictures, style files and strings, "component.scrollbar" among the styles.
 *
 * To assistive technology the sheet is a modal dialog while it is up, and what is under it is
 * disabled. The text is the dialog's name; the informative text and the severity are its
 * description, and the severity is the name of the icon: the strings "accessible_information",
 * "accessible_question" and "accessible_warning", of which a host that does not install them hears
 * nothing.
 */
class KOVAKIT_EXPORT KovaMessageSheet : public KovaSheet
{
    Q_OBJECT

public:
    /** What a sheet is for: chooses its icon and its buttons. */
    enum MessageType : int {
        Processing = 0, ///< Something is going on; the application's picture, no buttons.
        Information = 1, ///< A message; Ok.
        Warning = 2, ///< A warning; Ok.
        Question = 3, ///< A question; Ok and the second button.
        Upgrade = 4, ///< The offer of an upgrade; its button and the second button.
        WarningQuestion = 5, ///< A question with the warning icon; Ok and the second button.
        Animation = 6, ///< Something is going on; an animated picture, no buttons.
    };

    /**
     * A sheet without text; @p parent owns it and gives its width.
     *
     * A type beyond Animation has neither an icon nor buttons; only done() or quit() ends it.
     */
    KovaMessageSheet(MessageType type, QWidget *parent);

    /** A sheet that shows @p text; @p parent owns it. */
    KovaMessageSheet(MessageType type, const QString &text, QWidget *parent);

    /** A sheet that shows @p text and below it @p informativeText; @p parent owns it. */
    KovaMessageSheet(MessageType type, const QString &text, const QString &informativeText,
                     QWidget *parent);

    /** A sheet that shows @p text, with buttons named by @p buttonText; @p parent owns it. */
    KovaMessageSheet(MessageType type, const QString &text, const MsgBoxCustomBtnText &buttonText,
                     QWidget *parent);

    /**
     * A sheet of type Animation that shows @p text and the movie of @p movieFile, a path.
     *
     * The movie is 32 design pixels square and runs while the sheet is shown, from its first frame
     * on each time. It is no child of the sheet: it goes some time after the sheet, or stays if
     * somebody else shows it by then and owns it from there on. A file that cannot be read leaves
     * the icon empty. @p parent owns the sheet.
     */
    KovaMessageSheet(const QString &text, const QString &movieFile, QWidget *parent);

    /** Ends a run that is still going on, with the result 0. */
    ~KovaMessageSheet() override;

    /** Shows @p text, rich text whose pixel lengths are design pixels. */
    void setText(const QString &text);

    /** Shows @p text below the main text, or removes that label if @p text is empty. */
    void setInformativeText(const QString &text);

    /** Replaces the icon; a null pixmap leaves the sheet without one. */
    void setIcon(const QPixmap &pixmap);

    /**
     * Changes the type: icon, buttons with their default texts, and look.
     *
     * Each call connects the buttons once more, so that done() runs, and finished() fires, once
     * for the constructor and once for each call. Choose the type in the constructor if you can.
     */
    void setMessageType(MessageType type);

    /** The button for @p which, or null if the sheet has none. It belongs to the sheet. */
    [[nodiscard]] QAbstractButton *button(QMessageBox::StandardButton which) const;

    /** Makes @p button a default button; others stay what they are. Null does nothing. */
    void setDefaultButton(QPushButton *button);

    /**
     * Whether the window cannot be closed while the sheet is up, true at first.
     *
     * With true, exec() and showSheetWithBlock() also take the close button from the window.
     */
    void setBlockWindowButton(bool block);

    /**
     * Shows the sheet and returns its result when it has ended.
     *
     * The sheet may be deleted meanwhile, by itself or with its window; the result is then 0. A
     * call inside a call ends together with the outer one.
     */
    int exec();

    /** Shows the sheet and returns at once; the close button of the window is left alone. */
    void showSheet();

    /** Shows the sheet with the close button taken from the window, and returns at once. */
    void showSheetWithBlock();

public Q_SLOTS:
    /**
     * Ends the sheet with the code @p ret: gives the close button back, ends exec(), hides the
     * sheet with its mask and emits finished(). On a sheet that is not up it emits
     * finished() again and changes nothing else.
     */
    void done(int ret);

    /** Ends the sheet with the code 0. */
    void quit();

    /** Ends the sheet with the code of its button @p which. */
    void buttonClick(QAbstractButton *which);

protected:
    /** Lets Tab walk through the buttons and starts the movie. */
    void showEvent(QShowEvent *event) override;
    /** Stops the movie. */
    void hideEvent(QHideEvent *event) override;
    /** Handles the keys that reach the window, and refuses to let it be closed while blocked. */
    bool eventFilter(QObject *watched, QEvent *event) override;
    /** Keeps Tab and Shift+Tab inside the sheet. */
    bool focusNextPrevChild(bool next) override;

private:
    KovaMessageSheetPrivate *const d;
};
