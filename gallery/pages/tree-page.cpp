// SPDX-License-Identifier: MIT

#include "tree-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-tree-widget.h>

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QTreeWidgetItemIterator>

namespace {

constexpr int pathRole = Qt::UserRole;

bool isMenuKey(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Menu
        || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
}

} // namespace

TreePage::TreePage()
    : m_delegate(new ItemDelegate)
    , m_tree(new KovaTreeWidget(nullptr))
    , m_menu(new QMenu(this))
{
    m_delegate->setParent(this);
    m_menu->setStyleSheet(getStyleSheet("component.menu", false));
    makeFolders();
    setUpTree();

    auto *card =
        new Card(tr("Folders to back up"),
                 tr("A real folder. F2 renames, Insert makes a new folder, the right button "
                    "opens a menu. No name can hold a slash or begin with a dot."));
    card->addGrowing(m_tree);
    addGrowing(card);

    addPopup(m_tree, QStringLiteral("menu"), [this] {
        QTreeWidgetItem *item = m_tree->topLevelItem(1);
        m_tree->setCurrentItem(item);
        openMenuAtName(item);
    });
    addScene(QStringLiteral("rename"), [this] {
        QTreeWidgetItem *item = m_tree->topLevelItem(2);
        m_tree->setCurrentItem(item);
        m_tree->editItem(item);
    });
}

void TreePage::makeFolders()
{
    const QDir root(m_folder.path());
    for (const char *path :
         {"Documents/Invoices/2023", "Documents/Invoices/2024", "Documents/Letters",
          "Music/Recordings", "Pictures/Garden", "Pictures/Holidays", "My home", "System"})
        root.mkpath(QLatin1String(path));
}

void TreePage::setUpTree()
{
    m_tree->setItemDelegate(m_delegate);
    m_tree->setHeaderHidden(true);
    m_tree->setAccessibleName(tr("Folders to back up"));
    m_tree->setStyleSheet(getStyleSheet("theme.tree", false)
                          + getStyleSheet("component.scrollbar", false));
    m_tree->setBackgroundColor(QColor(0xD6, 0xE8, 0xF6), QColor(0xED, 0xF5, 0xFB));
    m_tree->setMinimumHeight(kovaPx(240));

    // The home entry is put in first: nothing sorts before it then.
    addItem(m_folder.filePath(QStringLiteral("My home")), nullptr)->tag = QStringLiteral("home");
    readFolder(m_folder.path(), nullptr);
    sort(Qt::AscendingOrder);
    m_tree->topLevelItem(1)->setExpanded(true);

    connect(m_tree, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem *item) {
        if (m_filling)
            return;
        if (item->text(0) != QFileInfo(item->data(0, pathRole).toString()).fileName())
            rename(item);
        else
            reportChosen();
    });
    connect(m_tree, &KovaTreeWidget::sigMouseRightClickEvent, this,
            [this](QMouseEvent *event) { openMenu(event->pos(), m_tree->itemAt(event->pos())); });
    connect(m_tree, &KovaTreeWidget::sigKeyPressEvent, this, [this](QKeyEvent *event) {
        if (event->key() == Qt::Key_Insert)
            addFolder(m_tree->currentItem());
        else if (isMenuKey(event))
            openMenuAtName(m_tree->currentItem());
    });
    connect(m_delegate, &ItemDelegate::sigKeyPressed, this,
            [this] { report(tr("The name stays as it was.")); });
}

void TreePage::readFolder(const QString &path, QTreeWidgetItem *parent)
{
    for (const QFileInfo &entry :
         QDir(path).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (entry.fileName() != QLatin1String("My home"))
            readFolder(entry.filePath(), addItem(entry.filePath(), parent));
    }
}

FileSystemTreeWidgetItem *TreePage::addItem(const QString &path, QTreeWidgetItem *parent)
{
    const QScopedValueRollback<bool> filling(m_filling, true);
    auto *item = new FileSystemTreeWidgetItem;
    item->setText(0, QFileInfo(path).fileName());
    item->setData(0, pathRole, path);
    if (item->text(0) == QLatin1String("System")) {
        // Never part of a backup.
        item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
        item->readOnly = true;
    } else {
        item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsAutoTristate);
        const bool isInChosen = parent && parent->checkState(0) == Qt::Checked;
        item->setCheckState(0, isInChosen ? Qt::Checked : Qt::Unchecked);
    }
    if (parent)
        parent->addChild(item);
    else
        m_tree->addTopLevelItem(item);
    return item;
}

void TreePage::rename(QTreeWidgetItem *item)
{
    const QScopedValueRollback<bool> filling(m_filling, true);
    const QFileInfo before(item->data(0, pathRole).toString());
    const QString name = item->text(0);
    if (!before.dir().rename(before.fileName(), name)) {
        item->setText(0, before.fileName());
        report(tr("There is a folder \"%1\" already.").arg(name));
        return;
    }
    // The folders inside of it have moved along.
    const QString oldPath = before.filePath();
    const QString newPath = before.dir().filePath(name);
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        const QString path = (*it)->data(0, pathRole).toString();
        if (path == oldPath || path.startsWith(oldPath + QLatin1Char('/')))
            (*it)->setData(0, pathRole, newPath + path.mid(oldPath.size()));
    }
    report(tr("Renamed \"%1\" to \"%2\".").arg(before.fileName(), name));
}

void TreePage::addFolder(QTreeWidgetItem *parent)
{
    const QDir dir(parent ? parent->data(0, pathRole).toString() : m_folder.path());
    QString name = tr("New folder");
    for (int number = 2; dir.exists(name); ++number)
        name = tr("New folder %1").arg(number);
    if (!dir.mkdir(name)) {
        report(tr("The folder cannot be made."));
        return;
    }
    QTreeWidgetItem *item = addItem(dir.filePath(name), parent);
    if (parent)
        parent->setExpanded(true);
    m_tree->setCurrentItem(item);
    m_tree->updateScrollArea(item);
    m_tree->editItem(item);
}

void TreePage::sort(Qt::SortOrder order)
{
    m_tree->sortItems(0, order);
}

void TreePage::openMenu(const QPoint &position, QTreeWidgetItem *item)
{
    m_menu->clear();
    if (item) {
        QAction *renaming = m_menu->addAction(tr("Rename"));
        renaming->setEnabled(item->flags() & Qt::ItemIsEditable);
        connect(renaming, &QAction::triggered, this, [this, item] { m_tree->editItem(item); });
    }
    connect(m_menu->addAction(tr("New folder")), &QAction::triggered, this,
            [this, item] { addFolder(item); });
    m_menu->addSeparator();
    connect(m_menu->addAction(tr("Sort from A to Z")), &QAction::triggered, this, [this] {
        sort(Qt::AscendingOrder);
        report(tr("Sorted from A to Z."));
    });
    connect(m_menu->addAction(tr("Sort from Z to A")), &QAction::triggered, this, [this] {
        sort(Qt::DescendingOrder);
        report(tr("Sorted from Z to A."));
    });
    m_menu->popup(m_tree->viewport()->mapToGlobal(position));
}

// Under the name, as the keyboard has no place of its own.
void TreePage::openMenuAtName(QTreeWidgetItem *item)
{
    if (item)
        m_tree->scrollToItem(item);
    const QRect row = m_tree->visualItemRect(item);
    const bool fromRight = m_tree->isRightToLeft();
    const int checkBox = kovaPx(24);
    openMenu(fromRight ? row.bottomRight() - QPoint(checkBox, 0)
                       : row.bottomLeft() + QPoint(checkBox, 0),
             item);
}

void TreePage::reportChosen()
{
    int chosen = 0;
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it)
        chosen += (*it)->checkState(0) == Qt::Checked ? 1 : 0;
    report(tr("%1 folders are chosen.").arg(chosen));
}
