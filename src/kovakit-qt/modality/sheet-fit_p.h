// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractButton>
#include <QMargins>
#include <QObject>
#include <QPointer>
#include <QSize>
#include <QVBoxLayout>
#include <QVector>

#include <functional>

class QDialogButtonBox;
class SheetTextArea;

// Fits a sheet into its window, and again whenever the window changes its size.
//
// A sheet is as wide as its owner lets it be, but not narrower than what is on it, and in no
// direction larger than the window. Where the room is scarce the buttons stand below each other,
// then what surrounds the texts gives way, and texts that are still too high are scrolled.
class SheetFit : public QObject
{
public:
    // What differs between sheets.
    struct Ways
    {
        // The width that the owner of the sheet lets it have, in device pixels.
        std::function<int()> preferredWidth;
        // What the mask around the sheet keeps free along the edges of the window; nothing without
        // a mask.
        std::function<QMargins()> marginsOfMask;
        // Gives up margins and icon for the sake of texts and buttons, or takes them back.
        std::function<void(bool compact)> setCompact;
    };

    // The contents margins that @p sheet has now are those that it keeps.
    SheetFit(QWidget *sheet, QDialogButtonBox *buttons, Ways ways);

    // Has to be called before the layout of the sheet is deleted.
    void leaveLayout();

    // The column for the texts of a new layout of the sheet, which the layout has to take over.
    [[nodiscard]] QVBoxLayout *makeTextColumn(const QVector<QWidget *> &labels, int spacing);

    // Adds the buttons, if there are any, to the end of a new layout, @p gap below the rest of it.
    void addButtons(QVBoxLayout *layout, int gap);

    // Fits the sheet, whose new layout is complete, to the present room. From here on its owner is
    // its present parent.
    void start();

    // The widget whose width is that of the sheet's surroundings; null if there is none.
    [[nodiscard]] QWidget *owner() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Lengths in device pixels. The extents are those of the layout as it is, with a column of
    // texts of the given size in it.
    [[nodiscard]] QSize room() const;
    [[nodiscard]] int extent(QLayoutItem *item, Qt::Orientation direction, int column) const;
    [[nodiscard]] int sheetExtent(Qt::Orientation direction, int column) const;
    [[nodiscard]] int extentAround(Qt::Orientation direction) const;
    [[nodiscard]] int buttonExtent(Qt::Orientation direction) const;
    [[nodiscard]] int widestWord() const;
    [[nodiscard]] int textHeight(int width) const;
    [[nodiscard]] int wantedWidth(int column) const;

    [[nodiscard]] bool staysAsItIs() const;
    void watchParent();
    void fitAgain();
    void fit();
    void restoreMargins();
    void setSheetWidth(int width);
    void saveRoom(const QSize &room);
    void setCompact(bool compact);
    void setButtonsTight(bool tight);
    SheetTextArea *area();
    void showTextsWhole();
    void showTextsScrolled(const QSize &column, int word);
    void keepFocus(const std::function<void()> &move);

    QWidget *const m_sheet;
    QDialogButtonBox *const m_buttons;
    const Ways m_ways;
    const QMargins m_margins;
    QPointer<QWidget> m_owner;
    QPointer<QWidget> m_parent;
    QVector<QWidget *> m_labels;
    int m_spacing = 0;
    QPointer<QVBoxLayout> m_column;
    SheetTextArea *m_area = nullptr;
    struct RoomyButton
    {
        QPointer<QAbstractButton> button;
        int minimumWidth;
        QString styleSheet;
    };
    QVector<RoomyButton> m_roomyButtons;
    QSpacerItem *m_gap = nullptr;
    int m_roomyGap = 0;
    bool m_isStacked = false;
    bool m_isCompact = false;
    bool m_isTight = false;
    bool m_isScrolled = false;
    // Whether the room had no say in the last fit.
    bool m_isFree = false;
};
