#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>

class KovaSheet;
class QAbstractButton;
class QDialogButtonBox;
class QKeyEvent;

// The modal run of a sheet: while it is active, the window around the sheet cannot be used, the
// keyboard focus stays in the sheet, and the window's close button may be switched off. All of it
// is undone when the run ends, however it ends: by the sheet, because the sheet or its window is
// destroyed or closed, or because the application quits.
//
// The modality installs the sheet as event filter on the window. The sheet hands what it sees there
// to filterWindow(), except for keys that it has a use of its own for.
class SheetModality : public QObject
{
public:
    // Ends the run with the code 0 through @p cancel when nobody else does.
    SheetModality(KovaSheet *sheet, std::function<void()> cancel);
    ~SheetModality() override;

    // Starts a run over the window that the sheet, already visible, is in. Does not start another
    // one over a run that is active.
    void begin(bool blockCloseButton);

    // Runs an event loop until end() and returns its result, or 0 when the run ended otherwise.
    // The sheet may be gone by then.
    int exec();

    // Ends the run and every loop of it. The focus goes back to the widget that had it before.
    void end(int result);

    // Ends the run, hides the sheet and lets it emit finished(). The sheet may be gone afterwards.
    void finish(int result);

    // Moves the focus to the next or previous widget of the sheet, wrapping around at the ends.
    bool moveFocus(bool forward);

    // The sheet's work as event filter on its window; tells whether it used the event up. With
    // @p blocked the window refuses to be closed. Keys press the buttons in @p box: Escape the
    // second one, Return, Enter and Space the focused one or else Ok, a mnemonic its own. Any other
    // key is swallowed.
    bool filterWindow(const QObject *watched, QEvent *event, bool blocked,
                      const QDialogButtonBox *box);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Run;

    [[nodiscard]] bool isTopmost() const;
    [[nodiscard]] bool isInside(const QWidget *widget) const;
    [[nodiscard]] bool isAncestorOfSheet(const QObject *object) const;
    [[nodiscard]] bool isCovered(const QObject *object) const;
    [[nodiscard]] QList<QWidget *> focusWidgets() const;
    void watchAncestors();
    void unwatchAncestors();
    void leaveDyingAncestor();
    void holdFocus(QWidget *now);
    void cancelIfWindowClosed();
    void pressKey(const QKeyEvent *event, const QDialogButtonBox *box);
    void pressFocusedButton(QAbstractButton *fallback);
    void pressMnemonic(const QKeyEvent *event);

    KovaSheet *const m_sheet;
    const std::function<void()> m_cancel;
    bool m_active = false;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_focusBefore;
    QPointer<QWidget> m_focusInside;
    void *m_closeButtonHandle = nullptr;
    QVector<std::shared_ptr<Run>> m_runs;
    int m_execDepth = 0;
    QMetaObject::Connection m_focusConnection;
    QVector<QMetaObject::Connection> m_ancestorConnections;
};
