// SPDX-License-Identifier: MIT

#include "days-accessible_p.h"

#include "house-calendar_p.h"

namespace {

// What is not a day: the weekday above a column, or a place that the table of Qt counts and that a
// calendar leaves empty, in the corner and before each row.
class HeaderAccessible : public QAccessibleInterface
{
public:
    HeaderAccessible(const DaysAccessible *table, int index)
        : m_table(table)
        , m_index(index)
    {
    }

    bool isValid() const override { return m_table->isValid(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_table->window(); }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_table->days());
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override { }
    QAccessible::Role role() const override
    {
        return isWeekday() ? QAccessible::ColumnHeader : QAccessible::RowHeader;
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name && isWeekday() ? m_table->columnDescription(m_index - 1)
                                                        : QString();
    }
    QRect rect() const override
    {
        if (!isWeekday())
            return QRect();
        QRect place = m_table->cellAt(0, m_index - 1)->rect();
        const QWidget *days = m_table->days();
        const QPoint top(0, days->parentWidget()->childrenRect().top());
        place.setTop(days->parentWidget()->mapToGlobal(top).y());
        place.setBottom(days->mapToGlobal(QPoint()).y() - 1);
        return place;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = !isWeekday() || !m_table->days()->isVisible();
        return state;
    }

    [[nodiscard]] int index() const { return m_index; }

private:
    [[nodiscard]] bool isWeekday() const
    {
        return m_index > 0 && m_index <= m_table->columnCount();
    }

    const DaysAccessible *m_table;
    const int m_index;
};

class DayAccessible : public QAccessibleInterface,
                      public QAccessibleActionInterface,
                      public QAccessibleTableCellInterface
{
public:
    DayAccessible(const DaysAccessible *table, const QDate &date)
        : m_table(table)
        , m_date(date)
    {
    }

    bool isValid() const override { return m_table->isValid() && place() >= 0; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_table->window(); }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override { return table(); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override { }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

    bool isSelected() const override { return state().selected; }
    QList<QAccessibleInterface *> columnHeaderCells() const override
    {
        return {m_table->header(columnIndex() + 1)};
    }
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return place() % m_table->columnCount(); }
    int rowIndex() const override { return place() / m_table->columnCount(); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override
    {
        return QAccessible::queryAccessibleInterface(m_table->days());
    }

    [[nodiscard]] QDate date() const { return m_date; }

private:
    [[nodiscard]] int place() const { return m_table->placeOf(m_date); }
    [[nodiscard]] HouseCalendar *calendar() const { return m_table->calendar(); }
    [[nodiscard]] bool canBeChosen() const
    {
        return calendar()->isEnabled() && calendar()->isInRange(m_date);
    }

    const DaysAccessible *m_table;
    const QDate m_date;
};

QString DayAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Name)
        return calendar()->locale().toString(m_date, QLocale::LongFormat);
    if (kind == QAccessible::Description && m_date == QDate::currentDate())
        return calendar()->todayText();
    return QString();
}

QRect DayAccessible::rect() const
{
    const QTableView *days = m_table->days();
    const QRect cell = days->visualRect(days->model()->index(rowIndex(), columnIndex()));
    return QRect(days->viewport()->mapToGlobal(cell.topLeft()), cell.size());
}

QAccessible::State DayAccessible::state() const
{
    QAccessible::State state;
    state.invisible = !m_table->days()->isVisible();
    state.disabled = !canBeChosen();
    if (state.disabled)
        return state;
    state.focusable = true;
    state.focused = m_table->days()->hasFocus() && m_date == calendar()->currentDay();
    state.selectable = true;
    state.selected = m_date == calendar()->chosenDay();
    return state;
}

void *DayAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface *>(this);
    return nullptr;
}

QStringList DayAccessible::actionNames() const
{
    return canBeChosen() ? QStringList{pressAction(), setFocusAction()} : QStringList();
}

void DayAccessible::doAction(const QString &name)
{
    if (!canBeChosen())
        return;
    if (name == setFocusAction()) {
        calendar()->setSelectedDate(m_date);
        calendar()->focusDays(Qt::OtherFocusReason);
    } else if (name == pressAction()) {
        // The host may delete the calendar in answer, or show a sheet and stay in it.
        QMetaObject::invokeMethod(
            calendar(), [calendar = calendar(), date = m_date] { calendar->choose(date); },
            Qt::QueuedConnection);
    }
}

template<class Key, class Make>
QAccessibleInterface *findOrMake(QHash<Key, QAccessible::Id> &ids, const Key &key, Make make)
{
    QAccessible::Id &id = ids[key];
    if (!id)
        id = QAccessible::registerAccessibleInterface(make());
    return QAccessible::accessibleInterface(id);
}

} // namespace

DaysAccessible::DaysAccessible(QTableView *days, HouseCalendar *calendar)
    : QAccessibleWidget(days, QAccessible::Table)
    , m_calendar(calendar)
{
}

DaysAccessible::~DaysAccessible()
{
    for (const QAccessible::Id id : qAsConst(m_days))
        QAccessible::deleteAccessibleInterface(id);
    for (const QAccessible::Id id : qAsConst(m_headers))
        QAccessible::deleteAccessibleInterface(id);
}

QTableView *DaysAccessible::days() const
{
    return static_cast<QTableView *>(widget());
}

QString DaysAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Name ? m_calendar->pageText() : QAccessibleWidget::text(kind);
}

void *DaysAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

int DaysAccessible::columnCount() const
{
    return days()->model()->columnCount();
}

int DaysAccessible::rowCount() const
{
    return days()->model()->rowCount();
}

// The table itself tells of its cells by such numbers, which count headers at the top and the left.
int DaysAccessible::childCount() const
{
    return (rowCount() + 1) * (columnCount() + 1);
}

QAccessibleInterface *DaysAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const int row = index / (columnCount() + 1);
    const int column = index % (columnCount() + 1);
    return row == 0 || column == 0 ? header(index) : cellAt(row - 1, column - 1);
}

int DaysAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    if (const auto *header = dynamic_cast<const HeaderAccessible *>(child))
        return header->index();
    const auto *day = dynamic_cast<const DayAccessible *>(child);
    const int place = day ? placeOf(day->date()) : -1;
    if (place < 0)
        return -1;
    return (place / columnCount() + 1) * (columnCount() + 1) + place % columnCount() + 1;
}

QAccessibleInterface *DaysAccessible::childAt(int x, int y) const
{
    const QDate date =
        m_calendar->dayAt(days()->indexAt(days()->viewport()->mapFromGlobal(QPoint(x, y))));
    return date.isValid() ? day(date) : nullptr;
}

QAccessibleInterface *DaysAccessible::focusChild() const
{
    const QDate date = days()->hasFocus() ? m_calendar->currentDay() : QDate();
    return date.isValid() ? day(date) : nullptr;
}

QAccessibleInterface *DaysAccessible::cellAt(int row, int column) const
{
    const QDate date = m_calendar->dayAt(days()->model()->index(row, column));
    return date.isValid() ? day(date) : nullptr;
}

QAccessibleInterface *DaysAccessible::header(int index) const
{
    return findOrMake(m_headers, index, [=] { return new HeaderAccessible(this, index); });
}

QAccessibleInterface *DaysAccessible::day(const QDate &date) const
{
    return findOrMake(m_days, date, [=] { return new DayAccessible(this, date); });
}

QString DaysAccessible::columnDescription(int column) const
{
    const QDate date = m_calendar->dayAt(days()->model()->index(0, column));
    return date.isValid() ? m_calendar->locale().standaloneDayName(date.dayOfWeek()) : QString();
}

int DaysAccessible::selectedCellCount() const
{
    return selectedCells().size();
}

QList<QAccessibleInterface *> DaysAccessible::selectedCells() const
{
    const QDate chosen = m_calendar->chosenDay();
    if (placeOf(chosen) < 0 || !m_calendar->isInRange(chosen))
        return {};
    return {day(chosen)};
}

int DaysAccessible::placeOf(const QDate &date) const
{
    const QDate first = m_calendar->dayAt(days()->model()->index(0, 0));
    const qint64 place = date.isValid() ? first.daysTo(date) : -1;
    return place < qint64(rowCount()) * columnCount() ? int(qMax<qint64>(place, -1)) : -1;
}

void DaysAccessible::modelChange(QAccessibleTableModelChangeEvent *)
{
    for (auto day = m_days.begin(); day != m_days.end();) {
        if (placeOf(day.key()) >= 0) {
            ++day;
            continue;
        }
        QAccessible::deleteAccessibleInterface(day.value());
        day = m_days.erase(day);
    }
}
