#include "sheet-modality_p.h"

#include "kova-sheet.h"
#include "shapi-linux.h"

#include <kovakit-qt/utils/util.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPushButton>

struct SheetModality::Run
{
    QEventLoop loop;
    int result = 0;
};

namespace {

// Sheets can be opened over sheets of the same window; only the latest one holds the window.
QVector<SheetModality *> activeModalities;

bool isPointerEvent(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::Gesture:
    case QEvent::ToolTip:
        return true;
    default:
        return false;
    }
}

bool isDragEvent(QEvent::Type type)
{
    return type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop;
}

bool isTypingEvent(QEvent::Type type)
{
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::InputMethod;
}

bool canTakeFocus(const QWidget *widget)
{
    return widget && widget->isEnabled() && widget->isVisible();
}

} // namespace

SheetModality::SheetModality(KovaSheet *sheet, std::function<void()> cancel)
    : m_sheet(sheet)
    , m_cancel(std::move(cancel))
{
}

SheetModality::~SheetModality()
{
    end(0);
}

void SheetModality::begin(bool blockCloseButton)
{
    if (blockCloseButton && !m_closeButtonHandle)
        SHAPISetCloseButtonOfWindowEnable(m_sheet, false, &m_closeButtonHandle);

    QWidget *window = m_sheet->window();
    // Installed last, so that it is asked before the filters of sheets below this one.
    window->installEventFilter(m_sheet);
    if (m_active)
        return;

    m_active = true;
    m_window = window;
    m_focusBefore = window->focusWidget();
    m_focusInside.clear();
    activeModalities.append(this);
    qApp->installEventFilter(this);
    m_focusConnection = connect(qApp, &QApplication::focusChanged, this,
                                [this](QWidget *, QWidget *now) { holdFocus(now); });
    watchAncestors();
    if (!isInside(m_focusBefore))
        holdFocus(m_focusBefore ? m_focusBefore.data() : window);
}

int SheetModality::exec()
{
    // Somebody who was told of the show or the focus ended it already.
    if (!m_active)
        return 0;

    const QPointer<SheetModality> self(this);
    const auto run = std::make_shared<Run>();
    m_runs.append(run);
    ++m_execDepth;
    run->loop.exec();
    if (self) {
        --m_execDepth;
        m_runs.removeOne(run);
        // The loop was ended from outside, by the end of the application.
        if (m_active && m_runs.isEmpty())
            m_cancel();
    }
    if (self)
        unwatchAncestors();
    return run->result;
}

void SheetModality::end(int result)
{
    const bool wasTopmost = isTopmost();
    if (m_closeButtonHandle)
        SHAPISetCloseButtonOfWindowEnable(m_sheet, true, &m_closeButtonHandle);

    const auto runs = std::exchange(m_runs, {});
    for (const auto &run : runs) {
        run->result = result;
        run->loop.quit();
    }

    m_sheet->window()->removeEventFilter(m_sheet);
    if (!m_active)
        return;
    m_active = false;
    disconnect(m_focusConnection);
    unwatchAncestors();
    qApp->removeEventFilter(this);
    activeModalities.removeOne(this);
    if (wasTopmost && canTakeFocus(m_focusBefore))
        m_focusBefore->setFocus(Qt::OtherFocusReason);
}

void SheetModality::finish(int result)
{
    const QPointer<KovaSheet> sheet(m_sheet);
    end(result);
    if (sheet)
        sheet->hide();
    if (sheet)
        Q_EMIT sheet->finished(result);
}

bool SheetModality::isTopmost() const
{
    for (auto it = activeModalities.crbegin(); it != activeModalities.crend(); ++it) {
        if ((*it)->m_window == m_window)
            return *it == this;
    }
    return false;
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

void SheetModality::watchAncestors()
{
    for (QWidget *ancestor = m_sheet->parentWidget(); ancestor;
         ancestor = ancestor->parentWidget()) {
        m_ancestorConnections.append(
            connect(ancestor, &QObject::destroyed, this, [this] { leaveDyingAncestor(); }));
        if (ancestor->isWindow())
            break;
    }
}

// A loop that was told to end may still delete the window before it returns to the caller of
// exec(), so the watch goes on until then.
void SheetModality::unwatchAncestors()
{
    if (m_active || m_execDepth > 0)
        return;
    for (const auto &connection : std::exchange(m_ancestorConnections, {}))
        disconnect(connection);
}

// The signal comes before the dying widget deletes its children.
void SheetModality::leaveDyingAncestor()
{
    m_focusBefore.clear();
    end(0);
    if (m_execDepth > 0 && !m_sheet->isOnHeap())
        m_sheet->setParent(nullptr);
}

QList<QWidget *> SheetModality::focusWidgets() const
{
    QList<QWidget *> widgets = accessibleList(m_sheet, AccessibleFilter({m_sheet}, Qt::TabFocus));
    const auto skipped = [](const QWidget *widget) {
        return !(widget->focusPolicy() & Qt::TabFocus) || !widget->isEnabled()
            || widget->focusProxy();
    };
    widgets.erase(std::remove_if(widgets.begin(), widgets.end(), skipped), widgets.end());
    return widgets;
}

bool SheetModality::moveFocus(bool forward)
{
    const QList<QWidget *> widgets = focusWidgets();
    if (widgets.isEmpty())
        return true;
    const int count = widgets.size();
    const int current = widgets.indexOf(m_sheet->window()->focusWidget());
    int next = forward ? 0 : count - 1;
    if (current >= 0)
        next = (current + (forward ? 1 : count - 1)) % count;
    widgets.at(next)->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool SheetModality::filterWindow(const QObject *watched, QEvent *event, bool blocked,
                                 const QDialogButtonBox *box)
{
    if (blocked && event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress || watched != m_sheet->window())
        return false;
    pressKey(static_cast<QKeyEvent *>(event), box);
    return true;
}

void SheetModality::pressKey(const QKeyEvent *event, const QDialogButtonBox *box)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (QPushButton *second = box->button(QDialogButtonBox::Discard))
            second->click();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        pressFocusedButton(box->button(QDialogButtonBox::Ok));
        break;
    default:
        pressMnemonic(event);
        break;
    }
}

void SheetModality::pressFocusedButton(QAbstractButton *fallback)
{
    auto *focused = qobject_cast<QAbstractButton *>(m_sheet->window()->focusWidget());
    if (focused && isInside(focused))
        focused->click();
    else if (fallback)
        fallback->click();
}

void SheetModality::pressMnemonic(const QKeyEvent *event)
{
    const QKeySequence pressed(event->key() | int(event->modifiers()));
    for (QAbstractButton *button : m_sheet->findChildren<QAbstractButton *>()) {
        if (button->isVisible() && !button->shortcut().isEmpty() && button->shortcut() == pressed) {
            button->click();
            return;
        }
    }
}

void SheetModality::holdFocus(QWidget *now)
{
    if (isInside(now)) {
        m_focusInside = now;
        return;
    }
    if (!now || now->window() != m_window || !isTopmost() || !m_sheet->isVisible())
        return;
    const QList<QWidget *> widgets = focusWidgets();
    QWidget *target = m_sheet;
    if (canTakeFocus(m_focusInside))
        target = m_focusInside;
    else if (!widgets.isEmpty())
        target = widgets.first();
    target->setFocus(Qt::OtherFocusReason);
}

void SheetModality::cancelIfWindowClosed()
{
    if (m_active && m_window && !m_window->isVisible())
        m_cancel();
}

bool SheetModality::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::Close && watched == m_window) {
        // Whether the window goes is known only after everybody had a say.
        QMetaObject::invokeMethod(this, &SheetModality::cancelIfWindowClosed, Qt::QueuedConnection);
        return false;
    }
    if (type == QEvent::HideToParent && watched == m_sheet) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_active && m_sheet->isHidden())
                    m_cancel();
            },
            Qt::QueuedConnection);
        return false;
    }
    if (!isTopmost())
        return false;

    if (type == QEvent::ShortcutOverride && watched->isWidgetType()
        && static_cast<QWidget *>(watched)->window() == m_window) {
        // Accepted as if a widget wanted the key: no shortcut fires, the key arrives as a press.
        event->accept();
        return true;
    }
    if (type == QEvent::Shortcut) {
        QObject *owner = watched;
        while (owner && !owner->isWidgetType())
            owner = owner->parent();
        return owner && isCovered(owner);
    }
    // Keys that the sheet does not want climb through its ancestors up to the window.
    const bool typing = isTypingEvent(type) && !isAncestorOfSheet(watched);
    if ((isPointerEvent(type) || typing) && isCovered(watched)) {
        event->accept();
        return true;
    }
    if (isDragEvent(type) && isCovered(watched)) {
        event->ignore();
        return true;
    }
    return false;
}
