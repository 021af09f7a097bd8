// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

#include <QTemporaryDir>

class FileSystemTreeWidgetItem;
class ItemDelegate;
class KovaTreeWidget;
class QMenu;
class QTreeWidgetItem;

// The tree of a real folder, which is made for the page and removed with it, so that names can be
// changed without harm.
class TreePage : public GalleryPage
{
    Q_OBJECT

public:
    TreePage();

private:
    void makeFolders();
    void setUpTree();
    void readFolder(const QString &path, QTreeWidgetItem *parent);
    FileSystemTreeWidgetItem *addItem(const QString &path, QTreeWidgetItem *parent);
    void rename(QTreeWidgetItem *item);
    void addFolder(QTreeWidgetItem *parent);
    void sort(Qt::SortOrder order);
    void openMenu(const QPoint &position, QTreeWidgetItem *item);
    void openMenuAtName(QTreeWidgetItem *item);
    void reportChosen();

    QTemporaryDir m_folder;
    ItemDelegate *m_delegate;
    KovaTreeWidget *m_tree;
    QMenu *m_menu;
    bool m_filling = false;
};
