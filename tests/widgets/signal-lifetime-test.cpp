// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// The widget that its host deletes from inside one of its signals.
QPointer<QWidget> doomed;

void kill()
{
    delete doomed;
}

QWidget *newTree()
{
    auto *tree = new KovaTreeWidget;
    auto *delegate = new ItemDelegate;
    delegate->setParent(tree);
    tree->setItemDelegate(delegate);
    auto *item = new FileSystemTreeWidgetItem;
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    tree->addTopLevelItem(item);
    QObject::connect(delegate, &ItemDelegate::sigKeyPressed, kill);
    QObject::connect(tree, &KovaTreeWidget::sigMouseRightClickEvent, kill);
    QObject::connect(tree, &KovaTreeWidget::sigKeyPressEvent, kill);
    return tree;
}

// The host empties the tree as soon as no folder is current.
QWidget *newEmptiedTree()
{
    auto *tree = new KovaTreeWidget;
    tree->addTopLevelItem(new FileSystemTreeWidgetItem);
    tree->setCurrentItem(tree->topLevelItem(0));
    QObject::connect(tree, &QTreeWidget::currentItemChanged, tree, [=](QTreeWidgetItem *current) {
        if (!current)
            tree->clear();
    });
    return tree;
}

QWidget *newPagingBar()
{
    auto *model = new KovaPagingModel(10, nullptr);
    auto *bar = new KovaPagingBar(model);
    model->setParent(bar);
    model->setItemCount(200);
    bar->setPage(8);
    QObject::connect(bar, &KovaPagingBar::sigPageChanged, kill);
    return bar;
}

QWidget *newFilterBar()
{
    auto *bar = new KovaFilterBar(nullptr);
    bar->setText("invoices");
    QObject::connect(bar, &KovaFilterBar::sigKeywordChanged, kill);
    return bar;
}

QWidget *newCalendar()
{
    auto *view = new KovaCalanderView(nullptr);
    view->resize(kovaPx(280), kovaPx(260));
    QObject::connect(view, &KovaCalanderView::sigDateSelect, kill);
    return view;
}

using Make = std::function<QWidget *()>;
using Act = std::function<void(QWidget *)>;

} // namespace

Q_DECLARE_METATYPE(Make)
Q_DECLARE_METATYPE(Act)

// Hosts replace a page, and the widgets upon it, in answer to what the user does there.
class SignalLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void widgetEndsInItsSignal_data();
    void widgetEndsInItsSignal();
};

void SignalLifetimeTest::widgetEndsInItsSignal_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<Act>("act");
    const auto row = [](const char *name, const Make &make, const Act &act) {
        QTest::newRow(name) << make << act;
    };
    row("tree, key", newTree, [](QWidget *tree) { press(tree, Qt::Key_Down); });
    row("tree, right press", newTree, [](QWidget *tree) {
        QTest::mousePress(tree->window()->windowHandle(), Qt::RightButton, {},
                          tree->mapTo(tree->window(), tree->rect().center()));
    });
    row("tree, escape in an editor", newTree, [](QWidget *widget) {
        auto *tree = qobject_cast<KovaTreeWidget *>(widget);
        tree->editItem(tree->topLevelItem(0));
        press(tree, Qt::Key_Escape);
    });
    row("tree, emptied", newEmptiedTree, [](QWidget *tree) {
        tree->clearFocus();
        tree->setFocus();
        kill();
    });
    row("paging, late click on a number", newPagingBar,
        [](QWidget *bar) { bar->findChildren<QAbstractButton *>().at(5)->animateClick(); });
    row("filter, return", newFilterBar, [](QWidget *bar) { press(bar, Qt::Key_Return); });
    row("calendar, click", newCalendar,
        [](QWidget *view) { click(view->findChild<QTableView *>()->viewport()); });
    row("calendar, return", newCalendar, [](QWidget *view) {
        view->findChild<QTableView *>()->setFocus();
        press(view, Qt::Key_Return);
    });
    row("calendar, today", newCalendar,
        [](QWidget *view) { click(view->findChild<QWidget *>("qt_calendar_today_button")); });
}

void SignalLifetimeTest::widgetEndsInItsSignal()
{
    QFETCH(Make, make);
    QFETCH(Act, act);
    QWidget page;
    QVBoxLayout layout(&page);
    QWidget *widget = make();
    layout.addWidget(widget);
    page.resize(kovaPx(600), kovaPx(400));
    showActive(&page);
    widget->setFocus();
    doomed = widget;
    act(widget);
    QTRY_VERIFY(!doomed);
}

QTEST_MAIN(SignalLifetimeTest)
#include "signal-lifetime-test.moc"
