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

} // namespace

Q_DECLARE_METATYPE(Event)

// Everything that can die while the loop of a sheet runs.
class SheetLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void loopEndsWithWhatItNeeds_data();
    void loopEndsWithWhatItNeeds();
    void quitEndsTheLoop();
};

void SheetLifetimeTest::loopEndsWithWhatItNeeds_data()
{
    QTest::addColumn<Event>("event");
    QTest::addColumn<bool>("onStack");
    QTest::addColumn<int>("result");
    const auto row = [](const char *name, const Event &event, int result = 0) {
        QTest::addRow("%s", name) << event << true << result;
        QTest::addRow("%s, sheet on the heap", name) << event << false << result;
    };
    row("window deleted", [](Window *window, QWidget *) { delete window; });
    row("page deleted", [](Window *window, QWidget *) { delete window->pages->widget(0); });
    row("mask deleted", [](Window *, QWidget *sheet) { delete sheet->parent(); });
    row("mask moved out",
        [](Window *, QWidget *sheet) { sheet->parentWidget()->setParent(nullptr); });
    row("sheet hidden", [](Window *, QWidget *sheet) { sheet->hide(); });
    row("page turned", [](Window *window, QWidget *) { window->pages->setCurrentIndex(1); });
    row("window accepted", [](Window *window, QWidget *) { window->accept(); });
    row("window closed for good", [](Window *window, KovaMessageSheet *sheet) {
        sheet->setBlockWindowButton(false);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->close();
    });
    // What had the focus cannot take it again, so that a button of the sheet dies with it.
    row(
        "answered by key",
        [](Window *window, QWidget *) {
            window->edit->setEnabled(false);
            press(window, Qt::Key_Tab);
            press(window, Qt::Key_Return);
        },
        accepted);
    row(
        "executed again",
        [](Window *, KovaMessageSheet *sheet) {
            soon([sheet] { sheet->done(77); });
            QCOMPARE(sheet->exec(), 77);
        },
        77);
    row("executed again, window deleted", [](Window *window, KovaMessageSheet *sheet) {
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

void SheetLifetimeTest::loopEndsWithWhatItNeeds()
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

void SheetLifetimeTest::quitEndsTheLoop()
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
}

QTEST_MAIN(SheetLifetimeTest)
#include "sheet-lifetime-test.moc"
