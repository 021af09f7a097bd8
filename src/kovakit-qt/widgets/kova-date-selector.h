// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/widgets/kova-calander-view.h>

#include <QComboBox>
#include <QDate>

#include <memory>

/**
 * A field for a date: a combo box that opens a calendar.
 *
 * It shows its placeholder until a date is chosen, and then the date as "yyyy-MM-dd"; it asks for
 * the width of the widest date. As long as none is chosen, the calendar shows no day as chosen, and
 * the dynamic property "empty" is true, for style sheets. The one item
 * of the box carries the date as its data: take it with currentData().toDate(), a null date as long
 * as none is chosen. Every choice emits the box's currentIndexChanged() twice, with -1 and with 0;
 * at the second one the date is there.
 *
 * Limit the dates with getCalendarView()->setMinimumDate() and setMaximumDate(). The popup takes
 * the focus to the calendar's days and gives it to the box when it closes; the keys are those of
 * KovaCalanderView, and F4, Space and Alt+Down open it. Without the focus the box leaves the wheel
 * to the page around it.
 *
 * For assistive technology the box is named by its accessible name or by the label whose buddy it
 * is, and what it shows is its text.
 *
 * The box is 32 design pixels high, the calendar 280 by 260. The host must have loaded pictures,
 * style files and strings.
 */
class KOVAKIT_EXPORT KovaDateSelector : public QComboBox
{
    Q_OBJECT

public:
    /** A field that shows @p placeholder; @p parent owns it. */
    KovaDateSelector(QString placeholder, QWidget *parent);

    ~KovaDateSelector() override;

    /** Goes back to the placeholder, and the calendar to today or the nearest day in its range. */
    void clearDate();

    /** The calendar. It belongs to the box. */
    [[nodiscard]] KovaCalanderView *getCalendarView() const;

    /** The room for the placeholder and for every date of four digits for the year. */
    QSize sizeHint() const override;
    /** The same: a date is never cut off. */
    QSize minimumSizeHint() const override;

    /**
     * Opens the calendar below the box, or above it, or where there is room on the screen.
     */
    void showPopup() override;

public Q_SLOTS:
    /**
     * Shows @p date and turns the calendar to it; closes the popup.
     *
     * The range of the calendar limits what the user can choose, not what is set here. An invalid
     * date brings the placeholder back and leaves calendar and popup alone.
     */
    void dateSelect(const QDate &date);

protected:
    /**
     * Takes the focus back when the popup closes. If nothing was chosen, turns the calendar back to
     * where it was when the popup opened.
     */
    bool eventFilter(QObject *watched, QEvent *event) override;

    /** Draws the box, its picture from all the pixels of the device, the placeholder weaker than a
     *  date. */
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
