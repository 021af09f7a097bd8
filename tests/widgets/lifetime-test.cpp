// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/answers.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

#include <optional>

namespace {

// A window of two pages, with the focus on the first, and a field beside them.
class Window : public QDialog
{
public:
    Window()
    {
        pages->addWidget(new QWidget);
        pages->addWidget(new QWidget);
        edit->setParent(pages->widget(0));
        new QLineEdit(this);
        resize(700, 400);
        pages->resize(size());
        show();
        edit->setFocus();
    }

    QStackedWidget *pages = new QStackedWidget(this);
    QLineEdit *edit = new QLineEdit;
};

template<typename Function>
void soon(Function function)
{
    QTimer::singleShot(0, qApp, function);
}

using Event = std::function<void(Window *window, KovaMessageSheet *sheet)>;

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

Q_DECLARE_METATYPE(Event)
Q_DECLARE_METATYPE(Make)
Q_DECLARE_METATYPE(Act)

// Everything that can die while the loop of a sheet runs, and widgets that end in their own
// signals: hosts replace a page, and the widgets upon it, in answer to what the user does there.
class LifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void loopEndsWithWhatItNeeds_data();
    void loopEndsWithWhatItNeeds();
    void quitEndsTheLoop();
    void widgetEndsInItsSignal_data();
    void widgetEndsInItsSignal();
};

void LifetimeTest::loopEndsWithWhatItNeeds_data()
{
    QTest::addColumn<Event>("event");
    QTest::addColumn<bool>("onStack");
    QTest::addColumn<int>("result");
    const auto row = [](const char *name, int result, const Event &event) {
        QTest::addRow("%s", name) << event << true << result;
        QTest::addRow("%s, sheet on the heap", name) << event << false << result;
    };
    row("window deleted", 0, [](Window *window, QWidget *) { delete window; });
    row("page deleted", 0, [](Window *window, QWidget *) { delete window->pages->widget(0); });
    row("mask deleted", 0, [](Window *, QWidget *sheet) { delete sheet->parent(); });
    row("mask moved out", 0,
        [](Window *, QWidget *sheet) { sheet->parentWidget()->setParent(nullptr); });
    row("sheet hidden", 0, [](Window *, QWidget *sheet) { sheet->hide(); });
    row("page turned", 0, [](Window *window, QWidget *) { window->pages->setCurrentIndex(1); });
    row("window accepted", 0, [](Window *window, QWidget *) { window->accept(); });
    row("window closed for good", 0, [](Window *window, KovaMessageSheet *sheet) {
        sheet->setBlockWindowButton(false);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->close();
    });
    // What had the focus cannot take it again, so that a button of the sheet dies with it.
    row("answered by key", accepted, [](Window *window, QWidget *) {
        window->edit->setEnabled(false);
        press(window, Qt::Key_Tab);
        press(window, Qt::Key_Return);
    });
    row("executed again", 77, [](Window *, KovaMessageSheet *sheet) {
        soon([sheet] { sheet->done(77); });
        QCOMPARE(sheet->exec(), 77);
    });
    row("executed again, window deleted", 0, [](Window *window, KovaMessageSheet *sheet) {
        soon([window] { delete window; });
        QCOMPARE(sheet->exec(), 0);
    });
    // A style that is set anew replaces the one in use.
    QTest::newRow("sheet deleted") << Event([](Window *, KovaMessageSheet *sheet) {
        sheet->setMessageType(KovaMessageSheet::Question);
        sheet->button(QMessageBox::Ok)->setFocus();
        delete sheet;
    }) << false << 0;
    QTest::newRow("sheet deleted by its answer") << Event([](Window *, KovaMessageSheet *sheet) {
        connect(sheet, &KovaSheet::finished, [sheet] { delete sheet; });
        sheet->button(QMessageBox::Ok)->click();
    }) << false << accepted;
}

void LifetimeTest::loopEndsWithWhatItNeeds()
{
    QFETCH(Event, event);
    QFETCH(bool, onStack);
    QFETCH(int, result);
    QWidget other; // keeps the application alive
    other.show();
    const QPointer<Window> window = new Window;
    QWidget *const page = window->pages->widget(0);
    std::optional<KovaMessageSheet> local;
    const QPointer<KovaMessageSheet> sheet =
        onStack ? &local.emplace(KovaMessageSheet::Question, "Go?", page)
                : new KovaMessageSheet(KovaMessageSheet::Question, "Go?", page);
    KovaMask::createMask(sheet, page, KovaMask::dimColor,
                         onStack ? KovaMask::KeepWhenEmpty : KovaMask::DeleteWhenEmpty);
    const QPointer<QWidget> mask = sheet->parentWidget();
    QSignalSpy finished(sheet, &KovaSheet::finished);
    soon([&] { event(window, sheet); });
    QCOMPARE(sheet->exec(), result);
    QVERIFY(sheet || !onStack);
    QVERIFY2(mask || !sheet || !sheet->parent(), "the sheet has a parent that is gone");
    if (sheet && mask) {
        QVERIFY(!sheet->isVisible());
        QCOMPARE(finished.count(), 1);
    }
    // One that is out of sight from the start ends as well.
    if (mask && window && window->pages->currentIndex() == 1)
        QCOMPARE(sheet->exec(), 0);
    if (window && window->isVisible()) {
        // It is its user's again.
        auto *focus = qobject_cast<QLineEdit *>(window->focusWidget());
        QVERIFY(focus);
        press(window, Qt::Key_A);
        QCOMPARE(focus->text(), "a");
        QVERIFY(window->close());
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY2(sheet || !mask, "the mask has outlived its sheet");
    local.reset();
    delete mask;
    delete window;
}

void LifetimeTest::quitEndsTheLoop()
{
    Window window;
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", &window);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    int result = -1;
    soon([&] {
        soon([] { QCoreApplication::exit(42); });
        result = sheet.exec();
    });
    QCOMPARE(QCoreApplication::exec(), 42);
    QCOMPARE(result, 0);
    QCOMPARE(finished, QList<QList<QVariant>>{{0}});

    auto *dying = new KovaInputSheet(&window);
    connect(dying, &KovaSheet::finished, &window, [dying] { delete dying; });
    soon([dying] { dying->done(3); });
    QCOMPARE(dying->exec(), 3);
}

void LifetimeTest::widgetEndsInItsSignal_data()
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
    // The host empties the tree as soon as no folder is current.
    row("tree, emptied", newTree, [](QWidget *widget) {
        auto *tree = qobject_cast<KovaTreeWidget *>(widget);
        tree->setCurrentItem(tree->topLevelItem(0));
        connect(tree, &QTreeWidget::currentItemChanged, tree, [tree](QTreeWidgetItem *current) {
            if (!current)
                tree->clear();
        });
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

void LifetimeTest::widgetEndsInItsSignal()
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

QTEST_MAIN(LifetimeTest)
#include "lifetime-test.moc"
