// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QMessageBox>

#include <memory>

/**
 * A message box that accepts by itself when the seconds shown in its accept button have run out.
 *
 * For a confirmation that goes ahead unless the user cancels. Set icon, title and texts with the
 * functions of QMessageBox and call exec(): it returns QMessageBox::Ok (1024) when the accept
 * button was pressed, by the user or by the countdown, and QMessageBox::Discard (8388608) when the
 * user cancelled: with the second button, with Escape or by closing the box, all of which press
 * that button. Another one can be named for Escape and closing with setEscapeButton().
 *
 * A box built for N seconds reads N - 1 as soon as it is seen and presses its button N seconds
 * after it was shown. Only the end of the count or of the box stops the count, not the end of
 * exec(), whichever way that came: a box that is kept after it was closed still presses its button
 * and then emits finished(1024) and accepted(), and one that is shown again afterwards presses it
 * at once. So act on what exec() returns and destroy the box when it has returned, or disconnect
 * from a box that is kept.
 *
 * The host must have loaded style files and strings.
 */
class KOVAKIT_EXPORT KovaCountdownMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    /** A box that counts down from @p seconds once it is shown; @p parent may be null. */
    KovaCountdownMessageBox(int seconds, QWidget *parent);

    ~KovaCountdownMessageBox() override;

public Q_SLOTS:
    /**
     * Counts one second down, or clicks the default button when none is left.
     *
     * The default button is the accept button unless another was set; without one nothing is
     * clicked.
     */
    void slotTick();

protected:
    /** Counts the first second down at once and starts the clock. */
    void showEvent(QShowEvent *event) override;
    /** Presses the button for Escape, or does what a QMessageBox does if there is none. */
    void closeEvent(QCloseEvent *event) override;

private:
    void updateButtonText();

    class Private;
    std::unique_ptr<Private> const d;
};
