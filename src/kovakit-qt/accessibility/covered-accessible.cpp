// SPDX-License-Identifier: MIT

#include "covered-accessible_p.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleInterface>
#include <QAccessibleWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

namespace {

QVector<const CoveredAccessible *> living;

} // namespace

bool hasParts(const QWidget *widget)
{
    return qobject_cast<const QAbstractItemView *>(widget) || qobject_cast<const QMenu *>(widget)
        || qobject_cast<const QMenuBar *>(widget) || qobject_cast<const QTabBar *>(widget);
}

CoveredAccessible::CoveredAccessible(QWidget *widget, QAccessibleInterface *original)
    : QAccessibleWidget(widget, original->role())
    , m_name(original->text(QAccessible::Name))
    , m_description(original->text(QAccessible::Description))
    , m_state(original->state())
    , m_hasText(original->textInterface())
    , m_hasValue(original->valueInterface())
    , m_hasParts(hasParts(widget))
{
    living.append(this);
}

CoveredAccessible::~CoveredAccessible()
{
    living.removeOne(this);
}

QWidgetList CoveredAccessible::widgets()
{
    QWidgetList widgets;
    for (const CoveredAccessible *covered : qAsConst(living)) {
        // The widget of an interface may be dying, and takes the interface along.
        if (QWidget *widget = covered->widget())
            widgets.append(widget);
    }
    return widgets;
}

void *CoveredAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface && m_hasText)
        return static_cast<QAccessibleTextInterface *>(this);
    if (type == QAccessible::ValueInterface && m_hasValue)
        return static_cast<QAccessibleValueInterface *>(this);
    return nullptr;
}

QString CoveredAccessible::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return m_name;
    case QAccessible::Description:
        return m_description;
    default:
        return QString();
    }
}

QAccessible::State CoveredAccessible::state() const
{
    QAccessible::State state = m_state;
    const QAccessible::State present = QAccessibleWidget::state();
    state.invisible = present.invisible;
    state.active = present.active;
    state.disabled = true;
    state.focusable = false;
    state.focused = false;
    state.editable = false;
    return state;
}

int CoveredAccessible::childCount() const
{
    return m_hasParts ? 0 : QAccessibleWidget::childCount();
}

// Qt warns when the current cell or tab, of which it tells by its number, is not there.
QAccessibleInterface *CoveredAccessible::child(int index) const
{
    return m_hasParts ? const_cast<CoveredAccessible *>(this) : QAccessibleWidget::child(index);
}

QString CoveredAccessible::content() const
{
    for (const char *name : {"displayText", "plainText", "text"}) {
        const QVariant value = property(name);
        if (value.isValid())
            return value.toString();
    }
    return QString();
}

QString CoveredAccessible::text(int start, int end) const
{
    return content().mid(start, end - start);
}

int CoveredAccessible::characterCount() const
{
    return content().size();
}

void CoveredAccessible::selection(int, int *start, int *end) const
{
    *start = *end = 0;
}

QString CoveredAccessible::attributes(int offset, int *start, int *end) const
{
    *start = *end = offset;
    return QString();
}
