// SPDX-License-Identifier: MIT

#include "sheet-fit_p.h"

#include "sheet-text-area_p.h"

#include "kovakit-qt/utils/fit-height_p.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QAbstractButton>
#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLayoutItem>
#include <QPointer>
#include <QSpacerItem>
#include <QVBoxLayout>
#include <QWidgetItem>

#include <functional>
#include <utility>

namespace {

constexpr int designLineHeight = 24;
constexpr int designTightGap = 4;
// Nobody can read a column of text that is narrower than this.
constexpr int designLeastColumn = 80;

const QLatin1String tightPadding("QPushButton, QPushButton:focus { padding: 0px; }");

int along(Qt::Orientation direction, const QSize &size)
{
    return direction == Qt::Horizontal ? size.width() : size.height();
}

int along(Qt::Orientation direction, const QMargins &margins)
{
    return direction == Qt::Horizontal ? margins.left() + margins.right()
                                       : margins.top() + margins.bottom();
}

bool isLaidOutAlong(Qt::Orientation direction, const QBoxLayout *box)
{
    const bool horizontal =
        box->direction() == QBoxLayout::LeftToRight || box->direction() == QBoxLayout::RightToLeft;
    return horizontal == (direction == Qt::Horizontal);
}

// QWidget::setParent() hides the widget that it moves.
template<typename Move>
void moveShown(QWidget *widget, Move move)
{
    const bool hidden = widget->isHidden() && widget->testAttribute(Qt::WA_WState_ExplicitShowHide);
    move();
    if (!hidden)
        widget->show();
}

} // namespace

SheetFit::SheetFit(QWidget *sheet, QDialogButtonBox *buttons, Ways ways)
    : m_sheet(sheet)
    , m_buttons(buttons)
    , m_ways(std::move(ways))
    , m_margins(sheet->contentsMargins())
{
    sheet->installEventFilter(this);
    watchParent();
}

void SheetFit::leaveLayout()
{
    setCompact(false);
    setButtonsTight(false);
    showTextsWhole();
    m_gap = nullptr;
}

void SheetFit::addButtons(QVBoxLayout *layout, int gap)
{
    if (m_buttons->buttons().isEmpty())
        return;
    m_roomyGap = gap;
    m_gap = new QSpacerItem(0, gap, QSizePolicy::Minimum, QSizePolicy::Fixed);
    layout->addSpacerItem(m_gap);
    layout->addWidget(m_buttons);
}

QVBoxLayout *SheetFit::makeTextColumn(const QVector<QWidget *> &labels, int spacing)
{
    m_labels = labels;
    m_spacing = spacing;
    m_column = new QVBoxLayout;
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(spacing);
    for (QWidget *label : labels)
        m_column->addWidget(label);
    return m_column;
}

void SheetFit::start()
{
    m_owner = m_sheet->parentWidget();
    fit();
}

QWidget *SheetFit::owner() const
{
    return m_owner ? m_owner.data() : m_sheet->parentWidget();
}

QSize SheetFit::room() const
{
    const QWidget *parent = m_sheet->parentWidget();
    if (!parent || m_sheet->isWindow())
        return {QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
    // A mask gets the size of its window a moment after it got its content.
    const QMargins margins = m_ways.marginsOfMask();
    return parent->window()->size()
         - QSize(along(Qt::Horizontal, margins), along(Qt::Vertical, margins));
}

int SheetFit::extent(QLayoutItem *item, Qt::Orientation direction, int column) const
{
    if (item->layout() == m_column)
        return column;
    if (item->widget() == m_buttons)
        return buttonExtent(direction);
    const auto *box = qobject_cast<const QBoxLayout *>(item->layout());
    if (!box)
        return along(direction, item->minimumSize());

    int total = 0;
    int visible = 0;
    for (int i = 0; i < box->count(); ++i) {
        QLayoutItem *inner = box->itemAt(i);
        if (inner->widget() && inner->isEmpty())
            continue;
        const int size = extent(inner, direction, column);
        total = isLaidOutAlong(direction, box) ? total + size : qMax(total, size);
        ++visible;
    }
    if (isLaidOutAlong(direction, box))
        total += box->spacing() * qMax(0, visible - 1);
    return total + along(direction, box->contentsMargins());
}

int SheetFit::sheetExtent(Qt::Orientation direction, int column) const
{
    return extent(m_sheet->layout(), direction, column)
         + along(direction, m_sheet->contentsMargins());
}

// What the column has to leave to others, however large it is.
int SheetFit::extentAround(Qt::Orientation direction) const
{
    constexpr int large = 100000;
    return sheetExtent(direction, large) - large;
}

int SheetFit::buttonExtent(Qt::Orientation direction) const
{
    const bool side = m_isStacked == (direction == Qt::Horizontal);
    int total = 0;
    int count = 0;
    for (QAbstractButton *button : m_buttons->buttons()) {
        // The minimum width that the sheet set may be less than what the button's text needs.
        const int size = along(direction, m_isTight ? button->minimumSizeHint()
                                                    : QWidgetItem(button).sizeHint());
        total = side ? qMax(total, size) : total + size;
        ++count;
    }
    return side ? total : total + m_buttons->layout()->spacing() * qMax(0, count - 1);
}

int SheetFit::widestWord() const
{
    int widest = 0;
    for (const QWidget *label : m_labels)
        widest = qMax(widest, label->minimumSizeHint().width());
    return widest;
}

int SheetFit::textHeight(int width) const
{
    int height = m_spacing * qMax(0, m_labels.size() - 1);
    for (QWidget *label : m_labels) {
        // A QLabel never asks for less than its minimum height, and its height is fixed.
        label->setMinimumHeight(0);
        height += qMax(0, label->heightForWidth(width));
    }
    return height;
}

// Without this a sheet that is put over its window would be laid out once more for nothing.
bool SheetFit::staysAsItIs() const
{
    const QSize now = m_sheet->size();
    return m_isFree && now.width() == wantedWidth(widestWord()) && now == now.boundedTo(room());
}

int SheetFit::wantedWidth(int column) const
{
    return qMax(m_ways.preferredWidth(), sheetExtent(Qt::Horizontal, column));
}

SheetTextArea *SheetFit::area()
{
    if (!m_area)
        m_area = new SheetTextArea(m_sheet);
    return m_area;
}

void SheetFit::watchParent()
{
    if (m_parent)
        m_parent->removeEventFilter(this);
    m_parent = m_sheet->parentWidget();
    if (m_parent)
        m_parent->installEventFilter(this);
}

bool SheetFit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_sheet && event->type() == QEvent::ParentChange) {
        watchParent();
        fitAgain();
    } else if (watched == m_parent && event->type() == QEvent::Resize) {
        fitAgain();
        // The parent's layout has just been run for the size that the sheet had before.
        if (m_parent->layout())
            m_parent->layout()->activate();
    } else if (watched == m_sheet && event->type() == QEvent::KeyPress && m_isScrolled) {
        // None of the widgets on the sheet had a use for the key.
        return m_area->scrollBy(static_cast<QKeyEvent *>(event));
    }
    return false;
}

void SheetFit::fitAgain()
{
    if (m_column && !staysAsItIs())
        fit();
}

void SheetFit::fit()
{
    const QSize room = this->room();
    restoreMargins();
    saveRoom(room);

    const int word = widestWord();
    const int wanted = wantedWidth(word);
    int width = qMin(wanted, room.width());
    QSize column(width - extentAround(Qt::Horizontal), room.height() - extentAround(Qt::Vertical));
    if (textHeight(column.width()) > column.height() || word > column.width()) {
        // The bar takes its width from the window, not from the words, while the window has some
        // left.
        const int bar = area()->barExtent();
        width = qMin(wantedWidth(word + bar), room.width());
        column.setWidth(width - extentAround(Qt::Horizontal));
        showTextsScrolled(column, word);
    } else {
        showTextsWhole();
    }
    m_isFree = !m_isStacked && !m_isCompact && !m_isScrolled && width == wanted;
    setSheetWidth(width);
}

// A style that is applied to the sheet takes the margins away.
void SheetFit::restoreMargins()
{
    m_sheet->ensurePolished();
    m_sheet->setContentsMargins(m_margins);
}

void SheetFit::setSheetWidth(int width)
{
    m_sheet->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Maximum);
    m_sheet->setFixedWidth(width);
    // The labels get their heights now, or else the first frame shows the sheet too low.
    m_sheet->layout()->activate();
    for (QWidget *label : qAsConst(m_labels))
        fitHeightToWidth(label);
    // A label that changes tells the outermost layout, and none of those between.
    for (QLayout *layout = m_column; layout; layout = qobject_cast<QLayout *>(layout->parent()))
        layout->invalidate();
    m_sheet->updateGeometry();
    m_sheet->adjustSize();
}

void SheetFit::saveRoom(const QSize &room)
{
    const auto isTooNarrow = [&] {
        return sheetExtent(Qt::Horizontal, kovaPx(designLeastColumn)) > room.width();
    };
    m_isStacked = false;
    setCompact(false);
    setButtonsTight(false);

    m_isStacked = isTooNarrow();
    const bool isTooLow = sheetExtent(Qt::Vertical, kovaPx(designLineHeight)) > room.height();
    setCompact(isTooNarrow() || isTooLow);
    setButtonsTight(isTooNarrow());
    m_buttons->setOrientation(m_isStacked ? Qt::Vertical : Qt::Horizontal);
    // A vertical box would be as narrow as its widest button.
    m_buttons->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SheetFit::setCompact(bool compact)
{
    if (compact == m_isCompact)
        return;
    m_isCompact = compact;
    m_ways.setCompact(compact);
    // The gap belongs to the layout, which deletes it when it is replaced.
    if (m_gap && m_column)
        m_gap->changeSize(0, compact ? kovaPx(designTightGap) : m_roomyGap);
    m_sheet->layout()->invalidate();
}

void SheetFit::setButtonsTight(bool tight)
{
    if (tight == m_isTight)
        return;
    m_isTight = tight;
    for (const auto &[button, width, style] : std::exchange(m_roomyButtons, {})) {
        if (button) {
            button->setMinimumWidth(width);
            button->setStyleSheet(style);
        }
    }
    if (!tight)
        return;
    for (QAbstractButton *button : m_buttons->buttons()) {
        m_roomyButtons.append({button, button->minimumWidth(), button->styleSheet()});
        button->setMinimumWidth(0);
        button->setStyleSheet(button->styleSheet() + tightPadding);
    }
}

void SheetFit::showTextsWhole()
{
    if (!m_isScrolled)
        return;
    m_isScrolled = false;
    keepFocus([this] {
        m_area->clearLabels();
        m_area->hide();
        if (m_column)
            m_column->removeWidget(m_area);
        for (QWidget *label : qAsConst(m_labels)) {
            moveShown(label, [&] {
                label->setParent(m_sheet);
                if (m_column)
                    m_column->addWidget(label);
            });
        }
        // As at first, Tab comes to the text before it comes to the buttons.
        if (!m_labels.isEmpty())
            m_labels.first()->lower();
    });
}

void SheetFit::showTextsScrolled(const QSize &column, int word)
{
    if (!m_isScrolled) {
        m_isScrolled = true;
        keepFocus([this] {
            m_area->setLabels(m_labels, m_spacing);
            m_column->addWidget(m_area);
            m_area->lower();
            m_area->show();
        });
    }
    const int bar = m_area->barExtent();
    const auto heightIn = [&](int width) {
        return textHeight(qMax(word, width)) + (word > width ? bar : 0);
    };
    const bool isHigh = heightIn(column.width()) > column.height();
    const int width = column.width() - (isHigh ? bar : 0);
    m_area->setFixedHeight(qBound(0, heightIn(width), qMax(0, column.height())));
    m_area->setBars(isHigh, word > width, word);
}

// QWidget::setParent() takes the focus from the widget that it moves.
void SheetFit::keepFocus(const std::function<void()> &move)
{
    const QPointer<QWidget> focus = m_sheet->window()->focusWidget();
    move();
    if (focus && focus->isVisible() && focus != m_sheet->window()->focusWidget()
        && m_sheet->isAncestorOf(focus))
        focus->setFocus(Qt::OtherFocusReason);
}
