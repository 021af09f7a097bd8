// SPDX-License-Identifier: MIT

#include "calendar-accessible_p.h"

#include "days-accessible_p.h"
#include "house-calendar_p.h"
#include "kovakit-qt/accessibility/button-accessible_p.h"
#include "kovakit-qt/accessibility/shown-text_p.h"

#include <QDate>
#include <QEvent>
#include <QLayout>
#include <QTimer>

#include <initializer_list>

namespace {

// The button shows the year; pressed, it becomes a field to type in. Its value can be set without.
class YearAccessible : public ShownTextAccessible, public QAccessibleValueInterface
{
public:
    YearAccessible(QToolButton *button, HouseCalendar *calendar)
        : ShownTextAccessible(button, QAccessible::SpinBox)
        , m_calendar(calendar)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : ShownTextAccessible::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString own = ShownTextAccessible::text(kind);
        return kind == QAccessible::Name && own.isEmpty() ? shownText() : own;
    }
    using ShownTextAccessible::text;

    QVariant currentValue() const override { return m_calendar->yearShown(); }
    QVariant minimumValue() const override { return m_calendar->minimumDate().year(); }
    QVariant maximumValue() const override { return m_calendar->maximumDate().year(); }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant &value) override
    {
        if (widget()->isEnabled())
            m_calendar->turnTo(value.toInt(), m_calendar->monthShown());
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled())
            names = QStringList{pressAction(), increaseAction(), decreaseAction()} + names;
        return names;
    }

    void doAction(const QString &name) override
    {
        if (name == increaseAction())
            setCurrentValue(m_calendar->yearShown() + 1);
        else if (name == decreaseAction())
            setCurrentValue(m_calendar->yearShown() - 1);
        else if (name == pressAction())
            static_cast<QToolButton *>(widget())->click();
        else
            QAccessibleWidget::doAction(name);
    }

protected:
    QString shownText() const override { return static_cast<QToolButton *>(widget())->text(); }

private:
    HouseCalendar *m_calendar;
};

class BodyAccessible : public PartsAccessible
{
public:
    explicit BodyAccessible(HouseCalendar *calendar)
        : PartsAccessible(calendar, QAccessible::Client)
    {
    }

protected:
    QWidgetList parts() const override
    {
        const CalendarParts &parts = static_cast<HouseCalendar *>(widget())->parts();
        QWidgetList shown = {parts.navigationBar, parts.days};
        shown.removeAll(nullptr);
        return shown;
    }
};

QAccessibleInterface *createPart(const QString &className, QObject *object)
{
    if (className == QLatin1String(HouseCalendar::staticMetaObject.className()))
        return new BodyAccessible(qobject_cast<HouseCalendar *>(object));
    if (className != QLatin1String(QTableView::staticMetaObject.className())
        && className != QLatin1String(QToolButton::staticMetaObject.className()))
        return nullptr;
    HouseCalendar *calendar = nullptr;
    for (QObject *around = object->parent(); around && !calendar; around = around->parent())
        calendar = qobject_cast<HouseCalendar *>(around);
    if (!calendar)
        return nullptr;
    const CalendarParts &parts = calendar->parts();
    if (object == parts.days)
        return new DaysAccessible(parts.days, calendar);
    if (object == parts.year)
        return new YearAccessible(parts.year, calendar);
    auto *button = qobject_cast<QToolButton *>(object);
    return button ? new ButtonAccessible(button) : nullptr;
}

// A part may have been asked for its interface before it was that of a HouseCalendar, and Qt would
// keep to its own answer. Makes it ask again.
void renewInterface(QObject *part)
{
    if (QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(part))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
}

} // namespace

int PartsAccessible::childCount() const
{
    return parts().size();
}

QAccessibleInterface *PartsAccessible::child(int index) const
{
    return QAccessible::queryAccessibleInterface(parts().value(index));
}

int PartsAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    auto *part = child ? qobject_cast<QWidget *>(child->object()) : nullptr;
    return part ? parts().indexOf(part) : -1;
}

CalendarAccessible::CalendarAccessible(QWidget *view)
    : PartsAccessible(view, QAccessible::Grouping)
{
}

QWidgetList CalendarAccessible::parts() const
{
    QWidgetList parts;
    const QLayout *layout = widget()->layout();
    for (int i = 0; layout && i < layout->count(); ++i) {
        if (QWidget *part = layout->itemAt(i)->widget())
            parts.append(part);
    }
    return parts;
}

QAccessibleInterface *CalendarAccessible::parent() const
{
    const QWidget *frame = widget()->parentWidget();
    if (frame && frame->inherits("QComboBoxPrivateContainer"))
        return QAccessible::queryAccessibleInterface(frame->parentWidget());
    return PartsAccessible::parent();
}

CalendarSpeaker::CalendarSpeaker(HouseCalendar *calendar)
    : QObject(calendar)
    , m_calendar(calendar)
{
    QAccessible::installFactory(createPart);
    const CalendarParts &parts = calendar->parts();
    for (QObject *part : std::initializer_list<QObject *>{
             calendar, parts.days, parts.previousMonth, parts.nextMonth, parts.month, parts.year}) {
        renewInterface(part);
    }
    if (!parts.days)
        return;
    parts.days->installEventFilter(this);
    connect(calendar, &QCalendarWidget::currentPageChanged, this, &CalendarSpeaker::tellOfPage);
    connect(calendar, &HouseCalendar::chosenDayChanged, this, [this](const QDate &before) {
        tellOfDay(before, QAccessible::SelectionRemove);
        tellOfDay(m_calendar->chosenDay(), QAccessible::SelectionAdd);
    });
}

bool CalendarSpeaker::eventFilter(QObject *, QEvent *event)
{
    // Only after the days themselves, as a whole, were told of as what has the focus.
    if (event->type() == QEvent::FocusIn) {
        QTimer::singleShot(0, this, [this] {
            if (m_calendar->parts().days->hasFocus())
                tellOfDay(m_calendar->currentDay(), QAccessible::Focus);
        });
    }
    return false;
}

void CalendarSpeaker::tellOfPage()
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent name(m_calendar->parts().days.data(), QAccessible::NameChanged);
    QAccessible::updateAccessibility(&name);
    if (QToolButton *button = m_calendar->parts().year) {
        QAccessibleValueChangeEvent year(button, m_calendar->yearShown());
        QAccessible::updateAccessibility(&year);
    }
}

void CalendarSpeaker::tellOfDay(const QDate &date, QAccessible::Event event)
{
    if (!QAccessible::isActive())
        return;
    const auto *table = dynamic_cast<DaysAccessible *>(
        QAccessible::queryAccessibleInterface(m_calendar->parts().days));
    if (!table || table->placeOf(date) < 0)
        return;
    QAccessibleEvent told(table->day(date), event);
    QAccessible::updateAccessibility(&told);
}
