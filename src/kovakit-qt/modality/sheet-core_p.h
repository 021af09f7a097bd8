// SPDX-License-Identifier: MIT

#pragma once

#include "sheet-fit_p.h"
#include "sheet-modality_p.h"

#include <QMessageBox>

// What every sheet that asks for an answer is made of, besides what it shows: its buttons, its
// modal run, and its fit into the window. The sheets forward to it what hosts and Qt call.
class SheetCore
{
public:
    // The button box is a new child of @p sheet, without buttons as yet.
    SheetCore(QWidget *sheet, SheetModality::Callbacks callbacks, SheetFit::Ways ways);

    [[nodiscard]] QAbstractButton *button(QMessageBox::StandardButton which) const;

    // The code that the sheet ends with when @p which, a button of the box, is pressed.
    [[nodiscard]] int codeOf(QAbstractButton *which) const;

    // Whether the window cannot be closed while the sheet is up, true at first.
    void setBlockWindowButton(bool block) { m_blockWindowButton = block; }

    // Starts a run with the focus on @p focused and returns its result. The sheet may be gone by
    // then.
    int exec(QWidget *focused, Qt::FocusReason reason);

    // Starts a run with the focus on @p focused, if there is one, and returns at once. The close
    // button is left alone.
    void show(QWidget *focused = nullptr);

    // Starts a run and returns at once. The close button goes if the window cannot be closed.
    void showWithBlock();

    // Ends the run, hides the sheet and lets it emit finished(). The sheet may be gone afterwards.
    void finish(int result) { m_modality.finish(result); }

    // Ends a run that is going on, for the destructor of the sheet: the run sends events to the
    // sheet while it is undone, so all of the sheet has to be there still.
    void end() { m_modality.end(0); }

    [[nodiscard]] bool isTopmost() const { return m_modality.isTopmost(); }

    // See SheetModality.
    bool moveFocus(bool forward) { return m_modality.moveFocus(forward); }
    bool filterWindow(const QObject *watched, QEvent *event);

    QDialogButtonBox *const buttonBox;
    SheetFit fit;

private:
    SheetModality m_modality;
    bool m_blockWindowButton = true;
};
