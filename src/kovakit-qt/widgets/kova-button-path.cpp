#include "kova-button-path.h"

#include "kovakit-qt/accessibility/path-accessible_p.h"
#include "kovakit-qt/utils/input-guards_p.h"
#include "kovakit-qt/utils/keys_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/escape-tooltip.h>

#include <QFocusEvent>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>

namespace {

bool isArrow(int column)
{
    return column % 2 != 0;
}

// It points along the row.
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

KovaButtonPath::KovaButtonPath(QWidget *parent)
    : QTableWidget(parent)
    , m_changeFolderBtn(new QToolButton)
{
    installPathAccessibility(this);
    setUpTable();
    setUpChangeFolderBtn();
    setStyleSheet(getStyleSheet("component.button_path", false));
}

KovaButtonPath::~KovaButtonPath()
{
    // A menu is not done with the action that it triggers until the action's slots are.
    if (m_inMenu)
        m_menu.release()->deleteLater();
}

void KovaButtonPath::setUpTable()
{
    insertRow(0);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    setShowGrid(false);
    setSelectionMode(NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollMode(ScrollPerPixel);
    setFocusPolicy(Qt::NoFocus);
    setFixedHeight(kovaPx(28));

    // Arrows are narrower than a header would let them be.
    horizontalHeader()->setMinimumSectionSize(1);
    setEditTriggers(NoEditTriggers);
    // A table would take the Tab of its buttons for a walk through its cells, and scroll under the
    // pointer at a press.
    setTabKeyNavigation(false);
    setAutoScroll(false);
}

void KovaButtonPath::setUpChangeFolderBtn()
{
    replaceMenu();
    m_changeFolderBtn->setIcon(getGlobalImage("folder", ImageManager::Default));
    m_changeFolderBtn->setIconSize(QSize(20, 20));
    m_changeFolderBtn->setPopupMode(QToolButton::InstantPopup);
    m_changeFolderBtn->hide();
    m_changeFolderBtn->setParent(this);
    m_changeFolderBtn->setStyleSheet(
        getStyleSheet("component.button_path_change_folder_btn", false));
    m_changeFolderBtn->setFixedSize(kovaPx(26), kovaPx(26));
    placeChangeFolderBtn();
    m_changeFolderBtn->installEventFilter(this);
}

void KovaButtonPath::placeChangeFolderBtn()
{
    const int x = isRightToLeft() ? width() - kovaPx(1) - kovaPx(26) : kovaPx(1);
    m_changeFolderBtn->move(x, kovaPx(1));
}

// How much of the row's visible beginning the button of the menu covers.
int KovaButtonPath::coveredWidth() const
{
    if (m_changeFolderBtn->isHidden())
        return 0;
    const QRect button = m_changeFolderBtn->geometry();
    const QRect row = viewport()->geometry();
    return isRightToLeft() ? row.right() + 1 - button.left() : button.right() + 1 - row.left();
}

// A menu that has been open may be at work still, or have clicks on their way: it ends as it is
// when the program is back, while a new one takes its place.
void KovaButtonPath::replaceMenu()
{
    if (m_menu) {
        m_menu->close();
        m_menu.release()->deleteLater();
    }
    m_menu = std::make_unique<QMenu>();
    m_menu->setStyleSheet(getStyleSheet("component.menu", false));
    dropLateClicks(m_menu.get());
    m_changeFolderBtn->setMenu(m_menu.get());
}

void KovaButtonPath::refresh(QString path)
{
    m_visibleWidth = horizontalScrollBar()->pageStep();
    const int focused = focusedColumn();
    // Qt asks the X server for the pointer at each widget that is shown in one that is on show.
    const bool onShow = viewport()->isVisible();
    if (onShow)
        viewport()->hide();
    if (m_menu->windowHandle())
        replaceMenu();
    else
        m_menu->clear();
    m_changeFolderBtn->hide();
    while (!m_buttons.isEmpty())
        delete m_buttons.takeFirst();
    clear();
    setColumnCount(0);

    const QStringList folders = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QString nameStyle = getStyleSheet("component.button_path_name_button", false);
    const QString arrowStyle = getStyleSheet("component.button_path_arrow", false);
    const QIcon arrow = arrowIcon(isRightToLeft());
    // The font of a button as it is made, before the bar hands on its own.
    const QFontMetrics metrics = QPushButton().fontMetrics();
    for (const QString &folder : folders) {
        if (!m_buttons.isEmpty())
            addArrow(arrow, arrowStyle);
        addNameButton(folder, nameStyle, kovaPx(metrics.horizontalAdvance(folder) + 16));
    }
    fillRow();
    if (onShow)
        viewport()->show();
    const int column = qMin(focused, m_buttons.size() - 1);
    if (column >= 0)
        m_buttons.at(column)->setFocus();
    updateColumnSize();
    if (column >= 0)
        showName(column);
}

QPushButton *KovaButtonPath::makeButton(const QString &style)
{
    auto *button = new QPushButton(viewport());
    button->setFlat(true);
    button->setStyleSheet(style);
    // In a dialog, Return in some field must not end in a folder.
    button->setAutoDefault(false);
    m_buttons.append(button);
    return button;
}

void KovaButtonPath::addNameButton(const QString &folder, const QString &style, int width)
{
    const int column = m_buttons.size();
    QPushButton *button = makeButton(style);
    button->setText(QString(folder).replace(QLatin1Char('&'), QLatin1String("&&")));
    button->setFixedSize(width, kovaPx(26));
    connect(button, &QPushButton::clicked, this, [this, column] { slotPathBarClicked(column); });
}

void KovaButtonPath::addArrow(const QIcon &icon, const QString &style)
{
    QPushButton *button = makeButton(style);
    button->setIcon(icon);
    button->setFixedSize(kovaPx(6), kovaPx(28));
    button->setFocusPolicy(Qt::NoFocus);
}

// A table lays out all of its cell widgets for every column that it gets, and Qt looks at all of
// their siblings when one of them moves while it is visible. So the columns come first, and each
// button is where it belongs before it is shown.
void KovaButtonPath::fillRow()
{
    setColumnCount(m_buttons.size());
    for (int column = 0; column < m_buttons.size(); ++column)
        setColumnWidth(column, m_buttons.at(column)->width());

    QWidget *previous = m_changeFolderBtn;
    for (int column = 0; column < m_buttons.size(); ++column) {
        QPushButton *button = m_buttons.at(column);
        button->move(columnViewportPosition(column), 0);
        setCellWidget(0, column, button);
        if (isArrow(column))
            continue;
        setTabOrder(previous, button);
        previous = button;
    }
    // Until then the scroll bar has the range of the row before.
    executeDelayedItemsLayout();
}

void KovaButtonPath::updateColumnSize()
{
    int total = 0;
    for (int column = 0; column < columnCount(); ++column) {
        if (isArrow(column))
            setColumnWidth(column, kovaPx(6));
        total += columnWidth(column);
    }
    if (total > m_visibleWidth)
        setChangeFolderBtn(total);
}

void KovaButtonPath::setChangeFolderBtn(int totalWidth)
{
    m_changeFolderBtn->show();
    updateGeometries();
    const int overflow = totalWidth - m_visibleWidth;
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
        addMenuEntry(column);
        hiddenUpTo = column;
        if (reachesIntoView)
            break;
        offset += width;
    }
    const QString hidden = getPath(hiddenUpTo);
    m_changeFolderBtn->setAccessibleName(hidden);
    m_changeFolderBtn->setToolTip(getHtmlEscapedStringForToolTip(hidden));
    // In place of the markup of the tooltip.
    m_changeFolderBtn->setAccessibleDescription(hidden);

    horizontalScrollBar()->setValue(horizontalScrollBar()->maximum());
}

void KovaButtonPath::addMenuEntry(int column)
{
    auto *action = new QAction(m_buttons.at(column)->text(), m_menu.get());
    m_menu->addAction(action);
    connect(action, &QAction::triggered, this, [this, column] {
        m_inMenu = true;
        const QPointer<KovaButtonPath> guard(this);
        slotPathBarClicked(column);
        if (guard)
            m_inMenu = false;
    });
}

// Scrolls the name into view, beside the button of the menu; of a name too wide for that, the
// beginning.
void KovaButtonPath::showName(int column)
{
    QScrollBar *bar = horizontalScrollBar();
    const int begin = horizontalHeader()->sectionPosition(column);
    const int least = begin + columnWidth(column) - viewport()->width();
    bar->setValue(qMin(qMax(bar->value(), least), begin - coveredWidth()));
}

void KovaButtonPath::updateGeometries()
{
    QScrollBar *bar = horizontalScrollBar();
    const int value = bar->value();
    QTableWidget::updateGeometries();
    bar->setMinimum(-coveredWidth());
    if (value < 0)
        bar->setValue(value);
}

void KovaButtonPath::resizeEvent(QResizeEvent *event)
{
    QTableWidget::resizeEvent(event);
    placeChangeFolderBtn();
}

void KovaButtonPath::changeEvent(QEvent *event)
{
    QTableWidget::changeEvent(event);
    if (event->type() != QEvent::LayoutDirectionChange)
        return;
    placeChangeFolderBtn();
    const QIcon arrow = arrowIcon(isRightToLeft());
    for (int column = 1; column < m_buttons.size(); column += 2)
        m_buttons.at(column)->setIcon(arrow);
}

QString KovaButtonPath::getPath(int column) const
{
    QString path;
    for (int i = 0; i <= qMin(column, m_buttons.size() - 1); ++i) {
        if (isArrow(i))
            path += QLatin1Char('/');
        else
            path += m_buttons.at(i)->text().replace(QLatin1String("&&"), QLatin1String("&"));
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
int KovaButtonPath::focusedColumn() const
{
    QWidget *widget = window()->focusWidget();
    if (widget == m_changeFolderBtn)
        return m_buttons.size();
    return m_buttons.indexOf(qobject_cast<QPushButton *>(widget));
}

bool KovaButtonPath::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(watched);
    if (button && isFirstReturn(event)) {
        // Either may end with the button, or with the bar, deleted.
        if (button == m_changeFolderBtn)
            m_changeFolderBtn->showMenu();
        else
            button->click();
        return true;
    }
    if (button && isFocusByKeyboard(event)) {
        const int column = m_buttons.indexOf(qobject_cast<QPushButton *>(watched));
        if (column >= 0)
            showName(column);
    }
    return QTableWidget::eventFilter(watched, event);
}
