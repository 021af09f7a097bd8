// SPDX-License-Identifier: MIT

#pragma once

#include "kovakit-qt/platform/close-button-hold_p.h"

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>

class QDialogButtonBox;

// The modal run of a sheet: while it is active, the window around the sheet cannot be used, the
// keyboard focus stays in the sheet, the sheet is enabled though what it lies on is not, and the
// window's close button may be switched off. All of it is undone when the run ends, however it
// ends: by the sheet, because the sheet or its window is destroyed, closed or hidden for good, or
// because the application quits. A sheet that gets into another window takes all of it along.
//
// The words used here:
//   begin   to start a run: show the sheet, hold its window, give it the focus
//   end     to undo what the run did to the window and to leave its event loops with a result
//   finish  to end the run, hide the sheet and let it emit finished(): what a sheet's done() does
//   quit    to finish with the code 0: a sheet's own slot
//   cancel  to let the sheet quit because nobody can answer it any more: it was hidden for good, or
//           the application quits
//   first and second button: the one that accepts and the one that refuses, see sheet-buttons_p.h
//
// The modality installs the sheet as event filter on the window. The sheet hands what it sees there
// to filterWindow(), except for keys that it has a use of its own for.
class SheetModality : public QObject
{
public:
    // What the run asks of a sheet, which it knows as no more than a widget.
    struct Callbacks
    {
        // Ends the sheet with the code 0, as its quit() does.
        std::function<void()> cancel;
        // Lets the sheet emit finished(). The sheet may be gone afterwards.
        std::function<void(int result)> emitFinished;
        // Whether the sheet may be deleted by its parent, see KovaSheet::isOnHeap().
        std::function<bool()> isOnHeap;
    };

    SheetModality(QWidget *sheet, Callbacks callbacks);
    ~SheetModality() override;

    // Shows the sheet and starts a run over the window that it is in, with the focus on
    // @p focused. Does not start another run while one is active.
    //
    // The show event, the popups that close and the focus that moves run code of the host, in its
    // slots and event filters, and that code may end the run or delete the sheet: whoever calls
    // this function has to look whether both are still there.
    void begin(bool blockCloseButton, QWidget *focused = nullptr,
               Qt::FocusReason reason = Qt::OtherFocusReason);

    // Begins a run, then runs an event loop until end() and returns the result given to that, or 0
    // when the run ended otherwise. The sheet may be gone by then.
    int exec(bool blockCloseButton, QWidget *focused, Qt::FocusReason reason);

    // Ends the run and every loop of it. The focus goes back to the widget that had it before, or
    // to the next one after that in the window; it does not stay in the sheet.
    void end(int result);

    // Ends the run, hides the sheet and lets it emit finished(). The sheet may be gone afterwards.
    void finish(int result);

    // Whether the run is active and no later one holds the same window.
    [[nodiscard]] bool isTopmost() const { return m_active && topmostOf(m_window) == this; }

    // Moves the focus to the next or previous widget of the sheet, wrapping around at the ends.
    bool moveFocus(bool forward);

    // The sheet's work as event filter on its window; tells whether it used the event up. With
    // @p blocked the window refuses to be closed. Keys press the buttons in @p box, see
    // pressSheetKey(), or are swallowed.
    bool filterWindow(const QObject *watched, QEvent *event, bool blocked,
                      const QDialogButtonBox *box);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Run;

    [[nodiscard]] static SheetModality *topmostOf(const QWidget *window);
    [[nodiscard]] bool isInside(const QWidget *widget) const;
    [[nodiscard]] bool isAncestorOfSheet(const QObject *object) const;
    [[nodiscard]] bool isCovered(const QObject *object) const;

    int runLoop();
    void closePopups() const;
    void enterWindow();
    void leaveWindow();
    void followWindow();
    void watchAncestors();
    void unwatchAncestors();
    void leaveDyingAncestor(const QWidget *ancestor);

    [[nodiscard]] QList<QWidget *> focusWidgets() const;
    [[nodiscard]] QWidget *heirOfFocus() const;
    void holdFocus(QWidget *now);
    void pullFocus();
    void returnFocus();

    void stayEnabled();
    void inheritDisabled();
    void noticeVisibility(const QObject *watched, QEvent::Type type);
    void cancelIfUnseen();
    bool filterDelayedClick(QObject *watched, QEvent *event) const;
    bool filterShortcut(QObject *watched, QEvent *event) const;
    bool filterUse(QObject *watched, QEvent *event) const;

    QWidget *const m_sheet;
    const Callbacks m_callbacks;
    bool m_active = false;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_focusBefore;
    QPointer<QWidget> m_focusInside;
    CloseButtonHold m_closeButton;
    QTimer m_unseenFor;
    QVector<std::shared_ptr<Run>> m_runs;
    int m_execDepth = 0;
    QMetaObject::Connection m_focusConnection;
    QVector<QMetaObject::Connection> m_ancestorConnections;
};
