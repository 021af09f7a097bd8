// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/widgets/kova-sheet.h>

#include <QMessageBox>

class KovaInputSheetPrivate;
class QAbstractButton;
class QLineEdit;
class QPushButton;

/**
 * Asks for one line of text inside the window: a prompt, a line edit and two buttons.
 *
 * Build one, put it over a window with KovaMask::createMask() and call exec(), or showSheet() and
 * wait for finished(); after QMessageBox::Ok take the text with getContent(). For a message or a
 * question without a text use KovaMessageSheet.
 *
 * While the sheet is up it is modal in the same way as a KovaMessageSheet, and can be answered,
 * hidden and moved as that one. Return presses the accept button, or the second one if that has the
 * focus, Escape the second one. The result is QMessageBox::Ok (1024) for the accept button,
 * QMessageBox::Discard (8388608) for the second one and 0 when the sheet was ended by quit(), or by
 * the end of its window, of itself or of the application, or was hidden for good.
 *
 * The sheet is 480 design pixels wide, or 40 less than its parent widget if that is narrower than
 * 520. Beyond that it fits its window as a KovaMessageSheet does: what is on it has the width that
 * it needs, and a prompt that is too high scrolls. The host must have loaded style files and
 * strings.
 */
class KOVAKIT_EXPORT KovaInputSheet : public KovaSheet
{
    Q_OBJECT

public:
    /** A sheet without a prompt; @p parent owns it and gives its width. */
    explicit KovaInputSheet(QWidget *parent);

    /** A sheet that asks with the prompt @p text; @p parent owns it. */
    KovaInputSheet(const QString &text, QWidget *parent);

    /** Ends a run that is still going on, with the result 0. */
    ~KovaInputSheet() override;

    /** Shows the prompt @p text, rich text whose pixel lengths are design pixels. */
    void setText(const QString &text);

    /**
     * The line edit, for an initial text, a placeholder, an echo mode. It belongs to the sheet.
     *
     * A validator limits what can be typed, but does not keep the accept button from being
     * pressed: switch that off yourself while the text is not good enough.
     */
    [[nodiscard]] QLineEdit *getLineEdit();

    /** What the line edit holds, whichever way the sheet was ended. */
    [[nodiscard]] QString getContent();

    /** The button for @p which, or null if the sheet has none. It belongs to the sheet. */
    [[nodiscard]] QAbstractButton *button(QMessageBox::StandardButton which) const;

    /** Makes @p button a default button; others stay what they are. Null does nothing. */
    void setDefaultButton(QPushButton *button);

    /**
     * Whether the window cannot be closed while the sheet is up, true at first.
     *
     * With true, exec() also takes the close button from the window.
     */
    void setBlockWindowButton(bool block);

    /**
     * Shows the sheet with the focus in the line edit and returns its result when it has ended.
     *
     * The sheet may be deleted meanwhile, by itself or with its window; the result is then 0. A
     * call inside a call ends together with the outer one.
     */
    int exec();

    /** Shows the sheet in the same way and returns at once; the close button is left alone. */
    void showSheet();

public Q_SLOTS:
    /**
     * Ends the sheet with the code @p ret: gives the close button back, ends exec(), hides the
     * sheet with its mask and emits finished(). Harmless on a sheet that is not up.
     */
    void done(int ret);

    /** Ends the sheet with the code 0. */
    void quit();

    /** Ends the sheet with the code of its button @p which. */
    void buttonClick(QAbstractButton *which);

protected:
    /** Handles the keys that reach the window, and refuses to let it be closed while blocked. */
    bool eventFilter(QObject *watched, QEvent *event) override;
    /** Keeps Tab and Shift+Tab inside the sheet. */
    bool focusNextPrevChild(bool next) override;

private:
    KovaInputSheetPrivate *const d;
};
