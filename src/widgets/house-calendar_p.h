#pragma once

#include <QCalendarWidget>
#include <QPointer>

class QTableView;

// A calendar whose parts can be dressed without its undoing it: no change of the locale brings its
// own names and first day of the week back. It shows days that cannot be chosen and the day under
// the keyboard's cursor.
class HouseCalendar : public QCalendarWidget
{
public:
    explicit HouseCalendar(QWidget *parent);

    // Puts @p row between the navigation bar and the days.
    void insertRow(QWidget *row);

    // The day under the keyboard's cursor. It is not always the selected one: turning the page
    // leaves the selection behind.
    [[nodiscard]] QDate currentDay() const;

    [[nodiscard]] bool isInRange(const QDate &date) const;

    [[nodiscard]] bool isTypingYear() const;

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void paintCell(QPainter *painter, const QRect &rect, const QDate &date) const override;

private:
    void showArrows();
    [[nodiscard]] bool isOnDays(const QPoint &globalPosition) const;
    void paintRing(QPainter *painter, const QRect &rect, bool selected) const;

    QPointer<QTableView> m_grid;
};
