// SPDX-License-Identifier: MIT

#include "sheet-modality_p.h"

#include "sheet-buttons_p.h"
#include "sheet-keys_p.h"
#include "window-use_p.h"

#include "kovakit-qt/accessibility/window-hold_p.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <QTimer>

#include <chrono>
#include <functional>
#include <iterator>
#include <memory>
#include <utility>

struct SheetModality::Run
{
    QEventLoop loop;
    int result = 0;
};

namespace {

// A sheet that has been out of sight for this long is hidden for good. QWidget::setParent() hides a
// widget that it moves; the host shows the widget again at once, a QLayout does so only when the
// event loop comes round.
constexpr std::chrono::milliseconds unseenForGood{100};

// Sheets can be opened over sheets of the same window; only the latest one holds the window.
QVector<SheetModality *> activeModalities;

} // namespace

SheetModality::SheetModality(QWidget *sheet, Callbacks callbacks)
    : m_sheet(sheet)
    , m_callbacks(std::move(callbacks))
{
    m_unseenFor.setSingleShot(true);
    m_unseenFor.setInterval(unseenForGood);
    connect(&m_unseenFor, &QTimer::timeout, this, &SheetModality::cancelIfUnseen);
}

SheetModality::~SheetModality()
{
    end(0);
}

void SheetModality::begin(bool blockCloseButton, QWidget *focused, Qt::FocusReason reason)
{
    const QPointer<SheetModality> self(this);
    m_sheet->show();
    if (!m_active) {
        closePopups();
        if (!self || m_active || m_sheet->isHidden())
            return;
        m_active = true;
        m_focusInside = focused;
        qApp->installEventFilter(this);
        m_focusConnection = connect(qApp, &QApplication::focusChanged, this,
                                    [this](QWidget *, QWidget *now) { holdFocus(now); });
        enterWindow();
    }
    if (self && m_active && blockCloseButton)
        m_closeButton.take(m_window);
    if (self && m_active && focused)
        focused->setFocus(reason);
}

int SheetModality::exec(bool blockCloseButton, QWidget *focused, Qt::FocusReason reason)
{
    const QPointer<SheetModality> self(this);
    begin(blockCloseButton, focused, reason);
    return self && m_active ? runLoop() : 0;
}

int SheetModality::runLoop()
{
    const QPointer<SheetModality> self(this);
    const auto run = std::make_shared<Run>();
    m_runs.append(run);
    ++m_execDepth;
    run->loop.exec();
    if (self) {
        --m_execDepth;
        m_runs.removeOne(run);
        // QEventLoop::exec() returned without end(): the application quits.
        if (m_active && m_runs.isEmpty())
            m_callbacks.cancel();
    }
    if (self && !m_active && m_execDepth == 0)
        unwatchAncestors();
    return run->result;
}

void SheetModality::end(int result)
{
    const auto runs = std::exchange(m_runs, {});
    for (const auto &run : runs) {
        run->result = result;
        run->loop.quit();
    }
    if (!m_active)
        return;
    m_active = false;
    m_unseenFor.stop();
    disconnect(m_focusConnection);
    qApp->removeEventFilter(this);
    // Code that still runs in the loop may delete the window before exec() returns to its caller,
    // so the watch goes on until then.
    if (m_execDepth == 0)
        unwatchAncestors();
    leaveWindow();
}

void SheetModality::finish(int result)
{
    const QPointer<SheetModality> self(this);
    end(result);
    if (self)
        m_sheet->hide();
    if (self && !m_active)
        inheritDisabled();
    if (self)
        m_callbacks.emitFinished(result);
}

SheetModality *SheetModality::topmostOf(const QWidget *window)
{
    for (auto it = activeModalities.crbegin(); it != activeModalities.crend(); ++it) {
        if ((*it)->m_window == window)
            return *it;
    }
    return nullptr;
}

bool SheetModality::isInside(const QWidget *widget) const
{
    return widget && (widget == m_sheet || m_sheet->isAncestorOf(widget));
}

bool SheetModality::isAncestorOfSheet(const QObject *object) const
{
    return object->isWidgetType() && static_cast<const QWidget *>(object)->isAncestorOf(m_sheet);
}

bool SheetModality::isCovered(const QObject *object) const
{
    if (!object->isWidgetType())
        return false;
    const auto *widget = static_cast<const QWidget *>(object);
    return widget->window() == m_window && !isInside(widget);
}

// Qt sends all keys to the popup that is open, not to the sheet.
void SheetModality::closePopups() const
{
    const QPointer<const SheetModality> self(this);
    while (QWidget *popup = QApplication::activePopupWidget()) {
        if (popup->isAncestorOf(m_sheet) || !popup->close() || !self)
            break;
    }
}

void SheetModality::enterWindow()
{
    const QPointer<SheetModality> self(this);
    m_window = m_sheet->window();
    activeModalities.append(this);
    holdForAssistive(m_window, m_sheet);
    m_window->installEventFilter(m_sheet);
    watchAncestors();
    m_focusBefore = m_window->focusWidget();
    if (isInside(m_focusBefore))
        m_focusBefore.clear();
    if (m_window->isVisible() && !m_sheet->isVisible())
        m_unseenFor.start();
    stayEnabled();
    if (self)
        pullFocus();
    // A QDialog whose own button loses the focus takes the default role from all other buttons.
    if (self)
        restoreDefaultButtons(m_sheet);
}

void SheetModality::leaveWindow()
{
    const bool wasTopmost = topmostOf(m_window) == this;
    activeModalities.removeOne(this);
    releaseForAssistive(m_sheet);
    m_closeButton.release();
    // QWidget clears the pointers to it early in its destructor.
    if (!m_window)
        return;
    m_window->removeEventFilter(m_sheet);
    for (SheetModality *other : qAsConst(activeModalities)) {
        if (isInside(other->m_focusBefore))
            other->m_focusBefore = m_focusBefore;
    }
    if (wasTopmost)
        returnFocus();
}

void SheetModality::followWindow()
{
    unwatchAncestors();
    if (m_sheet->window() == m_window) {
        watchAncestors();
        return;
    }
    const QPointer<SheetModality> self(this);
    const bool closeButtonIsTaken = m_closeButton.isTaken();
    leaveWindow();
    if (self && m_active)
        enterWindow();
    if (self && m_active && closeButtonIsTaken)
        m_closeButton.take(m_window);
}

void SheetModality::watchAncestors()
{
    for (QWidget *ancestor = m_sheet->parentWidget(); ancestor;
         ancestor = ancestor->parentWidget()) {
        m_ancestorConnections.append(connect(ancestor, &QObject::destroyed, this,
                                             [this, ancestor] { leaveDyingAncestor(ancestor); }));
        if (ancestor->isWindow())
            break;
    }
}

void SheetModality::unwatchAncestors()
{
    for (const auto &connection : std::exchange(m_ancestorConnections, {}))
        disconnect(connection);
}

// The signal comes before the dying widget deletes its children.
void SheetModality::leaveDyingAncestor(const QWidget *ancestor)
{
    if (m_focusBefore == ancestor || ancestor->isAncestorOf(m_focusBefore))
        m_focusBefore.clear();
    const QPointer<SheetModality> self(this);
    end(0);
    if (self && m_execDepth > 0 && !m_callbacks.isOnHeap())
        m_sheet->setParent(nullptr);
}

// Below a disabled widget QWidget::setEnabled() does nothing, and the state of those around the
// sheet is not the sheet's to change.
void SheetModality::stayEnabled()
{
    if (m_sheet->isEnabled() || m_sheet->testAttribute(Qt::WA_ForceDisabled))
        return;
    const QPointer<SheetModality> self(this);
    m_sheet->setAttribute(Qt::WA_Disabled, false);
    for (QWidget *child : m_sheet->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!child->isWindow() && !child->testAttribute(Qt::WA_ForceDisabled))
            child->setEnabled(true);
    }
    QEvent change(QEvent::EnabledChange);
    QCoreApplication::sendEvent(m_sheet, &change);
    if (self)
        pullFocus();
}

void SheetModality::inheritDisabled()
{
    const QWidget *parent = m_sheet->parentWidget();
    if (!parent || parent->isEnabled() || !m_sheet->isEnabled())
        return;
    m_sheet->setEnabled(false);
    // Only the parent is disabled: when it is enabled again, the sheet is enabled with it.
    m_sheet->setAttribute(Qt::WA_ForceDisabled, false);
}

void SheetModality::noticeVisibility(const QObject *watched, QEvent::Type type)
{
    if (watched != m_sheet && watched != m_window)
        return;
    m_unseenFor.start();
    if (type != QEvent::Show)
        return;
    if (m_closeButton.isTaken())
        m_closeButton.take(m_window);
    pullFocus();
}

void SheetModality::cancelIfUnseen()
{
    if (m_active && !m_sheet->isVisible())
        m_callbacks.cancel();
}

bool SheetModality::filterWindow(const QObject *watched, QEvent *event, bool blocked,
                                 const QDialogButtonBox *box)
{
    if (blocked && event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress || watched != m_window || !isTopmost())
        return false;
    pressSheetKey(m_sheet, box, static_cast<QKeyEvent *>(event));
    return true;
}

bool SheetModality::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ParentChange:
        if (watched == m_sheet || isAncestorOfSheet(watched))
            followWindow();
        return false;
    case QEvent::EnabledChange:
        if (watched == m_sheet)
            stayEnabled();
        return false;
    case QEvent::Show:
        noticeShownForAssistive(watched);
        Q_FALLTHROUGH();
    case QEvent::Hide:
    case QEvent::HideToParent:
    case QEvent::Close:
        noticeVisibility(watched, event->type());
        return false;
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
        return isTopmost() && filterShortcut(watched, event);
    case QEvent::Timer:
        return isTopmost() && filterDelayedClick(watched, event);
    default:
        return isTopmost() && filterUse(watched, event);
    }
}

// A button that is pressed by assistive technology or by its shortcut comes up and clicks some time
// later, and a sheet may have come up first. A click that is silent must not toggle anything.
bool SheetModality::filterDelayedClick(QObject *watched, QEvent *event) const
{
    auto *button = qobject_cast<QAbstractButton *>(watched);
    if (!button || button->isCheckable() || !isCovered(button))
        return false;
    const QSignalBlocker silent(button);
    watched->event(event);
    return true;
}

bool SheetModality::filterShortcut(QObject *watched, QEvent *event) const
{
    if (event->type() == QEvent::Shortcut) {
        QObject *owner = watched;
        while (owner && !owner->isWidgetType())
            owner = owner->parent();
        return owner && isCovered(owner);
    }
    if (!watched->isWidgetType() || static_cast<QWidget *>(watched)->window() != m_window)
        return false;
    // Accepted as if a widget wanted the key: no shortcut fires, and Qt sends the key as a press.
    event->accept();
    return true;
}

bool SheetModality::filterUse(QObject *watched, QEvent *event) const
{
    switch (useOf(event->type())) {
    case WindowUse::None:
        return false;
    case WindowUse::Typing:
        // Keys that the sheet does not want climb through its ancestors up to the window.
        if (isAncestorOfSheet(watched))
            return false;
        Q_FALLTHROUGH();
    case WindowUse::Pointer:
        if (isCovered(watched))
            event->accept();
        return isCovered(watched);
    case WindowUse::Drag:
        if (isCovered(watched))
            event->ignore();
        return isCovered(watched);
    }
    return false;
}
