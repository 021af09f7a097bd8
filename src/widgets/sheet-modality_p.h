#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>

class KovaSheet;
class QKeyEvent;

// The modal run of a sheet: while it is active, the window around the sheet cannot be used, the
// keyboard focus stays in the sheet, and the window's close button may be switched off. All of it
// is undone when the run ends, however it ends: by the sheet, because the sheet or its window is
// destroyed or closed, or because the application quits.
//
// What the keys that reach the window do is the sheet's own business: the modality installs the
// sheet as event filter on the window and leaves those keys to it.
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

    // Moves the focus to the next or previous widget of the sheet, wrapping around at the ends.
    bool moveFocus(bool forward);

    // Clicks the focused button of the sheet, or else @p fallback, which may be null.
    void pressFocusedButton(class QAbstractButton *fallback);

    // Clicks the button of the sheet whose mnemonic @p event is, if any.
    void pressMnemonic(const QKeyEvent *event);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Run;

    [[nodiscard]] bool isTopmost() const;
    [[nodiscard]] bool isInside(const QWidget *widget) const;
    [[nodiscard]] bool isCovered(const QObject *object) const;
    [[nodiscard]] QList<QWidget *> focusWidgets() const;
    void watchAncestors();
    void leaveDyingAncestor();
    void holdFocus(QWidget *now);
    void cancelIfWindowClosed();

    KovaSheet *const m_sheet;
    const std::function<void()> m_cancel;
    bool m_active = false;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_focusBefore;
    QPointer<QWidget> m_focusInside;
    void *m_closeButtonHandle = nullptr;
    QVector<std::shared_ptr<Run>> m_runs;
    QVector<QMetaObject::Connection> m_connections;
};
