// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>
#include <memory>

namespace {

// A widget whose host deletes it from inside one of its signals, and what makes it send that.
struct Case
{
    QWidget *widget;
    std::function<void()> act;
};

using Kill = std::function<void()>;
using Setup = std::function<Case(const Kill &)>;

Case treeCase(const Kill &kill, Qt::MouseButton button, int key)
{
    auto *tree = new KovaTreeWidget;
    auto *delegate = new ItemDelegate;
    delegate->setParent(tree);
    tree->setItemDelegate(delegate);
    auto *item = new FileSystemTreeWidgetItem;
    item->setText(0, "Documents");
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    tree->addTopLevelItem(item);
    QObject::connect(delegate, &ItemDelegate::sigKeyPressed, kill);
    if (button != Qt::NoButton)
        QObject::connect(tree, &KovaTreeWidget::sigMouseRightClickEvent, kill);
    else if (key != Qt::Key_Escape)
        QObject::connect(tree, &KovaTreeWidget::sigKeyPressEvent, kill);
    return {tree, [=] {
                if (button != Qt::NoButton)
                    QTest::mousePress(tree->window()->windowHandle(), button, {},
                                      tree->mapTo(tree->window(), tree->rect().center()));
                if (key == Qt::Key_Escape)
                    tree->editItem(item);
                if (key != 0)
                    press(tree, key);
            }};
}

// The host empties the tree as soon as no folder is current.
Case emptiedTreeCase(const Kill &kill)
{
    auto *tree = new KovaTreeWidget;
    tree->addTopLevelItem(new FileSystemTreeWidgetItem);
    tree->setCurrentItem(tree->topLevelItem(0));
    QObject::connect(tree, &QTreeWidget::currentItemChanged, tree, [=](QTreeWidgetItem *current) {
        if (!current)
            tree->clear();
    });
    return {tree, [=] {
                tree->clearFocus();
                tree->setFocus();
                QCOMPARE(tree->topLevelItemCount(), 0);
                kill();
            }};
}

Case pagingCase(const Kill &kill, int button, bool later)
{
    auto *model = new KovaPagingModel(10, nullptr);
    auto *bar = new KovaPagingBar(model);
    model->setParent(bar);
    model->setItemCount(200);
    bar->setPage(8);
    QObject::connect(bar, &KovaPagingBar::sigPageChanged, kill);
    QObject::connect(bar, &KovaPagingBar::sigRefresh, kill);
    auto *target = bar->findChildren<QAbstractButton *>().at(button);
    return {bar, [=] {
                if (later)
                    target->animateClick();
                else
                    click(target);
            }};
}

Case filterCase(const Kill &kill, int key)
{
    auto *bar = new KovaFilterBar(nullptr);
    bar->setText("invoices");
    QObject::connect(bar, &KovaFilterBar::sigKeywordChanged, kill);
    return {bar, [=] { press(bar, key); }};
}

Case calendarCase(const Kill &kill, const char *part, int key)
{
    auto *view = new KovaCalanderView(nullptr);
    view->resize(kovaPx(280), kovaPx(260));
    QObject::connect(view, &KovaCalanderView::sigDateSelect, kill);
    auto *target = view->findChild<QWidget *>(part);
    return {view, [=] {
                target->setFocus();
                if (key != 0)
                    press(view, key);
                else if (auto *table = qobject_cast<QTableView *>(target))
                    click(table->viewport());
                else
                    click(target);
            }};
}

} // namespace

// Hosts replace a page, and the widgets upon it, in answer to what the user does there.
class SignalLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void widgetEndsInItsSignal_data();
    void widgetEndsInItsSignal();
};

Q_DECLARE_METATYPE(Setup)

void SignalLifetimeTest::widgetEndsInItsSignal_data()
{
    QTest::addColumn<Setup>("setup");
    const auto row = [](const char *name, const Setup &setup) { QTest::newRow(name) << setup; };
    row("tree, key", [](auto &kill) { return treeCase(kill, Qt::NoButton, Qt::Key_Down); });
    row("tree, right press", [](auto &kill) { return treeCase(kill, Qt::RightButton, 0); });
    row("tree, escape", [](auto &kill) { return treeCase(kill, Qt::NoButton, Qt::Key_Escape); });
    row("tree, emptied", emptiedTreeCase);
    row("paging, arrow", [](auto &kill) { return pagingCase(kill, 0, false); });
    row("paging, number", [](auto &kill) { return pagingCase(kill, 5, false); });
    row("paging, late number", [](auto &kill) { return pagingCase(kill, 5, true); });
    row("filter, return", [](auto &kill) { return filterCase(kill, Qt::Key_Return); });
    row("calendar, click",
        [](auto &kill) { return calendarCase(kill, "qt_calendar_calendarview", 0); });
    row("calendar, return",
        [](auto &kill) { return calendarCase(kill, "qt_calendar_calendarview", Qt::Key_Return); });
    row("calendar, space",
        [](auto &kill) { return calendarCase(kill, "qt_calendar_calendarview", Qt::Key_Space); });
    row("calendar, today",
        [](auto &kill) { return calendarCase(kill, "qt_calendar_today_button", 0); });
    row("calendar, today by return",
        [](auto &kill) { return calendarCase(kill, "qt_calendar_today_button", Qt::Key_Return); });
}

void SignalLifetimeTest::widgetEndsInItsSignal()
{
    QFETCH(Setup, setup);
    auto page = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(page.get());
    QPointer<QWidget> widget;
    bool armed = false;
    const Case c = setup([&] {
        if (armed)
            delete widget;
    });
    widget = c.widget;
    layout->addWidget(widget);
    page->resize(kovaPx(600), kovaPx(400));
    showActive(page.get());
    widget->setFocus();
    armed = true;
    c.act();
    QTRY_VERIFY(!widget);
}

QTEST_MAIN(SignalLifetimeTest)
#include "signal-lifetime-test.moc"
