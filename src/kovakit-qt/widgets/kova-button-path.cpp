// SPDX-License-Identifier: MIT

#include "kova-button-path.h"

#include "kovakit-qt/accessibility/path-accessible_p.h"
#include "kovakit-qt/utils/input-guards_p.h"
#include "kovakit-qt/utils/keys_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/escape-tooltip.h>

#include <QAbstractButton>
#include <QAction>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>

#include <utility>

namespace {

bool isArrow(int column)
{
    return column % 2 != 0;
}

// The picture points to the right; from right to left it is mirrored, for folders go to the left.
QIcon arrowIcon(bool mirrored)
{
    const QPixmap arrow = getGlobalImage("bt_next", ImageManager::Default);
    return mirrored ? QPixmap::fromImage(arrow.toImage().mirrored(true, false)) : arrow;
}

bool isFirstReturn(const QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<const QKeyEvent *>(event);
    return isReturn(key) && !key->isAutoRepeat();
}

bool isFocusByKeyboard(const QEvent *event)
{
    if (event->type() != QEvent::FocusIn)
        return false;
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

} // namespace

class KovaButtonPath::Private
{
public:
    explicit Private(KovaButtonPath *path)
        : q(path)
        , changeFolderBtn(new QToolButton)
    {
    }

    void setUpTable();
    void setUpChangeFolderBtn();
    void replaceMenu();
    void placeChangeFolderBtn();
    QPushButton *addButton(const QString &style);
    void addNameButton(const QString &folder, const QString &style, int width);
    void addArrow(const QIcon &icon, const QString &style);
    void addMenuEntry(int column);
    void fillRow();
    void showName(int column);
    [[nodiscard]] int coveredWidth() const;
    [[nodiscard]] int focusedColumn() const;

    KovaButtonPath *const q;
    QList<QPushButton *> buttons;
    QToolButton *const changeFolderBtn;
    std::unique_ptr<QMenu> menu;
    bool inMenu = false;
    int visibleWidth = 0;
};

KovaButtonPath::KovaButtonPath(QWidget *parent)
    : QTableWidget(parent)
    , d(std::make_unique<Private>(this))
{
    installPathAccessibility(this);
    d->setUpTable();
    d->setUpChangeFolderBtn();
    setStyleSheet(getStyleSheet("component.button_path", false));
}

KovaButtonPath::~KovaButtonPath()
{
    // A menu is not done with the action that it triggers until the action's slots are.
    if (d->inMenu)
        d->menu.release()->deleteLater();
    // The end of a menu sends events to the bar and its buttons, whose handlers read d.
    d->menu.reset();
}

void KovaButtonPath::Private::setUpTable()
{
    q->insertRow(0);
    q->horizontalHeader()->hide();
    q->verticalHeader()->hide();
    q->setShowGrid(false);
    q->setSelectionMode(NoSelection);
    q->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    q->setHorizontalScrollMode(ScrollPerPixel);
    q->setFocusPolicy(Qt::NoFocus);
    q->setFixedHeight(kovaPx(28));

    // Arrows are narrower than a header would let them be.
    q->horizontalHeader()->setMinimumSectionSize(1);
    q->setEditTriggers(NoEditTriggers);
    // A table would take the Tab of its buttons for a walk through its cells, and scroll under the
    // pointer at a press.
    q->setTabKeyNavigation(false);
    q->setAutoScroll(false);
}

void KovaButtonPath::Private::setUpChangeFolderBtn()
{
    replaceMenu();
    changeFolderBtn->setIcon(getGlobalImage("folder", ImageManager::Default));
    changeFolderBtn->setIconSize(QSize(20, 20));
    changeFolderBtn->setPopupMode(QToolButton::InstantPopup);
    changeFolderBtn->hide();
    changeFolderBtn->setParent(q);
    changeFolderBtn->setStyleSheet(getStyleSheet("component.button_path_change_folder_btn", false));
    changeFolderBtn->setFixedSize(kovaPx(26), kovaPx(26));
    placeChangeFolderBtn();
    changeFolderBtn->installEventFilter(q);
}

void KovaButtonPath::Private::placeChangeFolderBtn()
{
    const int x = q->isRightToLeft() ? q->width() - kovaPx(1) - kovaPx(26) : kovaPx(1);
    changeFolderBtn->move(x, kovaPx(1));
}

// How much of the row's visible beginning the button of the menu covers.
int KovaButtonPath::Private::coveredWidth() const
{
    if (changeFolderBtn->isHidden())
        return 0;
    const QRect button = changeFolderBtn->geometry();
    const QRect row = q->viewport()->geometry();
    return q->isRightToLeft() ? row.right() + 1 - button.left() : button.right() + 1 - row.left();
}

// A menu that has been open may be at work still, or have clicks on their way: it ends as it is
// when the program is back, while a new one takes its place.
void KovaButtonPath::Private::replaceMenu()
{
    if (menu) {
        menu->close();
        menu.release()->deleteLater();
    }
    menu = std::make_unique<QMenu>();
    menu->setStyleSheet(getStyleSheet("component.menu", false));
    dropLateClicks(menu.get());
    changeFolderBtn->setMenu(menu.get());
}

void KovaButtonPath::refresh(QString path)
{
    d->visibleWidth = horizontalScrollBar()->pageStep();
    const int focused = d->focusedColumn();
    // For each widget that is shown inside a visible one QWidget asks the X server where the
    // pointer is. In a hidden viewport the buttons are shown without these round trips.
    const bool wasVisible = viewport()->isVisible();
    if (wasVisible)
        viewport()->hide();
    if (d->menu->windowHandle())
        d->replaceMenu();
    else
        d->menu->clear();
    d->changeFolderBtn->hide();
    while (!d->buttons.isEmpty())
        delete d->buttons.takeFirst();
    clear();
    setColumnCount(0);

    const QStringList folders = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QString nameStyle = getStyleSheet("component.button_path_name_button", false);
    const QString arrowStyle = getStyleSheet("component.button_path_arrow", false);
    const QIcon arrow = arrowIcon(isRightToLeft());
    // The font of a button as it is made, before the bar hands on its own.
    const QFontMetrics metrics = QPushButton().fontMetrics();
    for (const QString &folder : folders) {
        if (!d->buttons.isEmpty())
            d->addArrow(arrow, arrowStyle);
        d->addNameButton(folder, nameStyle, kovaPx(metrics.horizontalAdvance(folder) + 16));
    }
    d->fillRow();
    if (wasVisible)
        viewport()->show();
    const int column = qMin(focused, d->buttons.size() - 1);
    if (column >= 0)
        d->buttons.at(column)->setFocus();
    updateColumnSize();
    if (column >= 0)
        d->showName(column);
}

QPushButton *KovaButtonPath::Private::addButton(const QString &style)
{
    auto *button = new QPushButton(q->viewport());
    button->setFlat(true);
    button->setStyleSheet(style);
    // In a dialog, Return in some field must not end in a folder.
    button->setAutoDefault(false);
    buttons.append(button);
    return button;
}

void KovaButtonPath::Private::addNameButton(const QString &folder, const QString &style, int width)
{
    const int column = buttons.size();
    QPushButton *button = addButton(style);
    button->setText(QString(folder).replace(QLatin1Char('&'), QLatin1String("&&")));
    button->setFixedSize(width, kovaPx(26));
    connect(button, &QPushButton::clicked, q, [q = q, column] { q->slotPathBarClicked(column); });
}

void KovaButtonPath::Private::addArrow(const QIcon &icon, const QString &style)
{
    QPushButton *button = addButton(style);
    button->setIcon(icon);
    button->setFixedSize(kovaPx(6), kovaPx(28));
    button->setFocusPolicy(Qt::NoFocus);
}

// A table lays out all of its cell widgets for every column that it gets, and Qt looks at all of
// their siblings when one of them moves while it is visible. So the columns come first, and each
// button is where it belongs before it is shown.
void KovaButtonPath::Private::fillRow()
{
    q->setColumnCount(buttons.size());
    for (int column = 0; column < buttons.size(); ++column)
        q->setColumnWidth(column, buttons.at(column)->width());

    QWidget *previous = changeFolderBtn;
    for (int column = 0; column < buttons.size(); ++column) {
        QPushButton *button = buttons.at(column);
        button->move(q->columnViewportPosition(column), 0);
        q->setCellWidget(0, column, button);
        if (isArrow(column))
            continue;
        setTabOrder(previous, button);
        previous = button;
    }
    // Until then the scroll bar has the range of the row before.
    q->executeDelayedItemsLayout();
}

void KovaButtonPath::updateColumnSize()
{
    int total = 0;
    for (int column = 0; column < columnCount(); ++column) {
        if (isArrow(column))
            setColumnWidth(column, kovaPx(6));
        total += columnWidth(column);
    }
    if (total > d->visibleWidth)
        setChangeFolderBtn(total);
}

void KovaButtonPath::setChangeFolderBtn(int totalWidth)
{
    d->changeFolderBtn->show();
    updateGeometries();
    const int overflow = totalWidth - d->visibleWidth;
    int offset = 0;
    int hiddenUpTo = -1;
    for (int column = 0; column < columnCount(); ++column) {
        const int width = columnWidth(column);
        if (isArrow(column)) {
            offset += width;
            continue;
        }
        const bool reachesIntoView = overflow < offset + width;
        if (offset >= overflow && !reachesIntoView)
            continue;
        d->addMenuEntry(column);
        hiddenUpTo = column;
        if (reachesIntoView)
            break;
        offset += width;
    }
    const QString hidden = getPath(hiddenUpTo);
    d->changeFolderBtn->setAccessibleName(hidden);
    d->changeFolderBtn->setToolTip(getHtmlEscapedStringForToolTip(hidden));
    // In place of the markup of the tooltip.
    d->changeFolderBtn->setAccessibleDescription(hidden);

    horizontalScrollBar()->setValue(horizontalScrollBar()->maximum());
}

void KovaButtonPath::Private::addMenuEntry(int column)
{
    auto *action = new QAction(buttons.at(column)->text(), menu.get());
    menu->addAction(action);
    connect(action, &QAction::triggered, q, [this, column] {
        inMenu = true;
        const QPointer<KovaButtonPath> guard(q);
        q->slotPathBarClicked(column);
        if (guard)
            inMenu = false;
    });
}

// Scrolls the name into view, beside the button of the menu; of a name too wide for that, the
// beginning.
void KovaButtonPath::Private::showName(int column)
{
    QScrollBar *bar = q->horizontalScrollBar();
    const int begin = q->horizontalHeader()->sectionPosition(column);
    const int least = begin + q->columnWidth(column) - q->viewport()->width();
    bar->setValue(qMin(qMax(bar->value(), least), begin - coveredWidth()));
}

void KovaButtonPath::updateGeometries()
{
    QScrollBar *bar = horizontalScrollBar();
    const int value = bar->value();
    QTableWidget::updateGeometries();
    bar->setMinimum(-d->coveredWidth());
    if (value < 0)
        bar->setValue(value);
}

void KovaButtonPath::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    // A QTableView would tell of the cell as of a child, which the tool bar does not have.
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
}

void KovaButtonPath::resizeEvent(QResizeEvent *event)
{
    QTableWidget::resizeEvent(event);
    d->placeChangeFolderBtn();
}

void KovaButtonPath::changeEvent(QEvent *event)
{
    QTableWidget::changeEvent(event);
    if (event->type() != QEvent::LayoutDirectionChange)
        return;
    d->placeChangeFolderBtn();
    const QIcon arrow = arrowIcon(isRightToLeft());
    for (int column = 1; column < d->buttons.size(); column += 2)
        d->buttons.at(column)->setIcon(arrow);
}

QString KovaButtonPath::getPath(int column) const
{
    QString path;
    for (int i = 0; i <= qMin(column, d->buttons.size() - 1); ++i) {
        if (isArrow(i))
            path += QLatin1Char('/');
        else
            path += d->buttons.at(i)->text().replace(QLatin1String("&&"), QLatin1String("&"));
    }
    return path;
}

void KovaButtonPath::slotUpdatePath(QString path)
{
    refresh(path);
}

void KovaButtonPath::slotPathBarClicked(int btn_id)
{
    Q_EMIT sigUpdatePath(getPath(btn_id));
}

// The column of the button with the focus, one past the row for the menu's, -1 for none.
int KovaButtonPath::Private::focusedColumn() const
{
    QWidget *widget = q->window()->focusWidget();
    if (widget == changeFolderBtn)
        return buttons.size();
    return buttons.indexOf(qobject_cast<QPushButton *>(widget));
}

bool KovaButtonPath::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(watched);
    if (button && isFirstReturn(event)) {
        // Either may end with the button, or with the bar, deleted.
        if (button == d->changeFolderBtn)
            d->changeFolderBtn->showMenu();
        else
            button->click();
        return true;
    }
    if (button && isFocusByKeyboard(event)) {
        const int column = d->buttons.indexOf(qobject_cast<QPushButton *>(watched));
        if (column >= 0)
            d->showName(column);
    }
    return QTableWidget::eventFilter(watched, event);
}
