// SPDX-License-Identifier: MIT

#include "support/test-host.h"
#include "support/user-input.h"

#include <kovakit-qt/widgets/kova-tree-widget.h>

#include <QtTest>
#include <QtWidgets>

namespace {

QTreeWidgetItem *addFolder(QTreeWidgetItem *parent, const QString &name)
{
    auto *item = new QTreeWidgetItem(parent, {name});
    item->setFlags(item->flags() | Qt::ItemIsAutoTristate | Qt::ItemIsEditable);
    item->setCheckState(0, Qt::Unchecked);
    return item;
}

} // namespace

class TreeAccessibleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { tree.reset(); }
    void rowsAreThoseThatAreSeen();
    void actsOnTheRowItself();
    void renamesAndSaysWhyNot();

private:
    QStringList rows() const;
    QAccessibleInterface *row(const QString &name) const;
    bool act(const QString &name, const QString &action) const;

    std::unique_ptr<KovaTreeWidget> tree;
    QAccessibleInterface *spoken = nullptr;
};

void TreeAccessibleTest::init()
{
    tree = std::make_unique<KovaTreeWidget>();
    auto *delegate = new ItemDelegate;
    delegate->setParent(tree.get());
    tree->setItemDelegate(delegate);
    tree->setHeaderHidden(true);
    QTreeWidgetItem *root = tree->invisibleRootItem();
    addFolder(root, "Home");
    QTreeWidgetItem *music = addFolder(root, "Music");
    addFolder(music, "Live");
    addFolder(music, "Studio");
    addFolder(root, "Work");
    showActive(tree.get());
    spoken = QAccessible::queryAccessibleInterface(tree.get());
}

QStringList TreeAccessibleTest::rows() const
{
    QStringList names;
    for (int i = 0; i < spoken->childCount(); ++i) {
        QAccessibleInterface *child = spoken->child(i);
        if (spoken->indexOfChild(child) != i || child != spoken->child(i))
            names << "a child that is not where it says";
        if (child->role() == QAccessible::TreeItem)
            names << child->text(QAccessible::Name);
    }
    return names;
}

QAccessibleInterface *TreeAccessibleTest::row(const QString &name) const
{
    for (int i = 0; i < spoken->childCount(); ++i) {
        if (spoken->child(i)->text(QAccessible::Name) == name)
            return spoken->child(i);
    }
    return nullptr;
}

bool TreeAccessibleTest::act(const QString &name, const QString &action) const
{
    QAccessibleActionInterface *actions = row(name)->actionInterface();
    const bool isOffered = actions->actionNames().contains(action);
    actions->doAction(action);
    return isOffered;
}

void TreeAccessibleTest::rowsAreThoseThatAreSeen()
{
    QCOMPARE(rows(), QStringList({"Home", "Music", "Work"}));
    QVERIFY(act("Music", "Expand"));
    QCOMPARE(rows(), QStringList({"Home", "Music", "Live", "Studio", "Work"}));
    QAccessibleInterface *live = row("Live");
    tree->topLevelItem(0)->setHidden(true);
    QTRY_COMPARE(rows(), QStringList({"Music", "Live", "Studio", "Work"}));
    // A row stays the same to those who know it, wherever it goes, until its item goes.
    tree->sortItems(0, Qt::DescendingOrder);
    QCOMPARE(rows(), QStringList({"Work", "Music", "Studio", "Live"}));
    QCOMPARE(row("Live"), live);
    QCOMPARE(live->tableCellInterface()->rowIndex(), 3);
    delete tree->topLevelItem(1);
    QVERIFY(!live->isValid());
    QCOMPARE(rows(), QStringList({"Work"}));
}

void TreeAccessibleTest::actsOnTheRowItself()
{
    tree->topLevelItem(1)->setExpanded(true);
    QVERIFY(act("Studio", "Toggle"));
    QVERIFY(row("Studio")->state().checked);
    QVERIFY(row("Music")->state().checkStateMixed);
    QVERIFY(act("Live", "Toggle"));
    QVERIFY(row("Music")->state().checked);
    QVERIFY(act("Music", "Collapse"));
    QVERIFY(row("Music")->state().collapsed);
    QVERIFY(act("Work", "SetFocus"));
    QVERIFY(row("Work")->state().focused && row("Work")->state().selected);
    // Without a listener there is no menu to show.
    QVERIFY(!act("Work", "ShowMenu"));
    tree->topLevelItem(2)->setFlags(Qt::ItemIsEnabled);
    QVERIFY(!act("Work", "Toggle"));
    QVERIFY(!act("Work", "Press"));
}

void TreeAccessibleTest::renamesAndSaysWhyNot()
{
    tree->editItem(tree->topLevelItem(0));
    QAccessibleInterface *field = spoken->child(spoken->childCount() - 1);
    QCOMPARE(field->text(QAccessible::Name), "New name");
    press(tree.get(), Qt::Key_Slash);
    QVERIFY(field->text(QAccessible::Description).startsWith("A name cannot"));
    // Whoever writes by assistive technology gets past the check of the keys.
    field->editableTextInterface()->replaceText(0, 4, "a/b");
    QVERIFY(act("Home", "SetFocus"));
    QCOMPARE(tree->topLevelItem(0)->text(0), "Home");
}

QTEST_MAIN(TreeAccessibleTest)
#include "tree-accessible-test.moc"
