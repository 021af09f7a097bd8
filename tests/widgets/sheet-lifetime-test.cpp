// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QWidget *newWindow()
{
    auto *window = new QWidget;
    // Whoever has lost the focus without an heir finds it on the first.
    new QLineEdit(window);
    auto *edit = new QLineEdit(window);
    edit->setObjectName("edit");
    window->resize(700, 400);
    window->show();
    edit->setFocus();
    return window;
}

KovaMessageSheet *newSheet(QWidget *window)
{
    auto *sheet = new KovaMessageSheet(KovaMessageSheet::Question, "Go?", window);
    KovaMask::createMask(sheet, window, QColor(0, 0, 0, 20));
    return sheet;
}

template<typename Function>
void soon(Function function)
{
    QTimer::singleShot(0, qApp, function);
}

using Hide = std::function<void(QDialog &dialog, QStackedWidget &stack)>;
using Event = std::function<void(QWidget *window, KovaMessageSheet *sheet)>;

} // namespace

Q_DECLARE_METATYPE(Event)
Q_DECLARE_METATYPE(Hide)

// Everything that can die while the loop of a sheet runs.
class SheetLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void loopEndsWithWhatItNeeds_data();
    void loopEndsWithWhatItNeeds();
    void answeredSheetsDie();
    void loopEndsUnseen_data();
    void loopEndsUnseen();
    void sheetDiesInFinished();
    void panelDiesAroundASheetWithoutMask();
    void windowDiesUnderTheShortcuts();
    void execInsideExec();
    void quitEndsTheLoop();
    void animatedSheetsEnd();
};

void SheetLifetimeTest::loopEndsWithWhatItNeeds_data()
{
    QTest::addColumn<Event>("event");
    QTest::addColumn<bool>("onStack");
    const auto row = [](const char *name, const Event &event) {
        QTest::addRow("%s", name) << event << true;
        QTest::addRow("%s, sheet on the heap", name) << event << false;
    };
    row("window deleted", [](QWidget *window, QWidget *) { delete window; });
    row("mask deleted", [](QWidget *, QWidget *sheet) { delete sheet->parent(); });
    row("sheet hidden", [](QWidget *, QWidget *sheet) { sheet->hide(); });
    row("window closed", [](QWidget *window, KovaMessageSheet *sheet) {
        sheet->setBlockWindowButton(false);
        window->close();
    });
    row("window closed for good", [](QWidget *window, KovaMessageSheet *sheet) {
        sheet->setBlockWindowButton(false);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->close();
    });
    QTest::newRow("sheet deleted")
        << Event([](QWidget *, QWidget *sheet) { delete sheet; }) << false;
}

void SheetLifetimeTest::loopEndsWithWhatItNeeds()
{
    QFETCH(Event, event);
    QFETCH(bool, onStack);
    QWidget other; // keeps the application alive
    other.show();
    const QPointer<QWidget> window = newWindow();
    if (onStack) {
        KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", window);
        KovaMask::createMask(&sheet, window, QColor(0, 0, 0, 20));
        QSignalSpy finished(&sheet, &KovaSheet::finished);
        soon([&] { event(window, &sheet); });
        QCOMPARE(sheet.exec(), 0);
        QVERIFY(!sheet.isVisible());
        QVERIFY(finished.count() <= 1);
        QVERIFY(window || !sheet.parent());
    } else {
        const QPointer<KovaMessageSheet> sheet = newSheet(window);
        soon([&] { event(window, sheet); });
        QCOMPARE(sheet->exec(), 0);
        QVERIFY(window || !sheet);
    }
    if (window && window->isVisible()) {
        // It is its user's again.
        window->activateWindow();
        press(window, Qt::Key_A);
        QTRY_COMPARE(window->findChild<QLineEdit *>("edit")->text(), "a");
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete window;
}

// The widget that had the focus cannot take it again, so that a button of the sheet dies with it.
void SheetLifetimeTest::answeredSheetsDie()
{
    for (const bool byMouse : {false, true}) {
        for (const bool onStack : {false, true}) {
            const std::unique_ptr<QWidget> window(newWindow());
            auto *edit = window->findChild<QLineEdit *>("edit");
            window->activateWindow();
            const auto answer = [&](const KovaMessageSheet *sheet) {
                edit->setEnabled(false);
                press(window.get(), Qt::Key_Tab);
                if (byMouse)
                    click(sheet->button(QMessageBox::Discard));
                else
                    press(window.get(), Qt::Key_Return);
            };
            if (onStack) {
                soon([&] { answer(visibleSheet(window.get())); });
                QVERIFY(showConfirmMsg("", "Go?", window.get()) != 0);
            } else {
                KovaMessageSheet *sheet = newSheet(window.get());
                soon([&] { answer(sheet); });
                QVERIFY(sheet->exec() != 0);
                // Twice the same: a style that is set anew replaces the one in use.
                sheet->setMessageType(KovaMessageSheet::Question);
                sheet->showSheet();
                sheet->button(QMessageBox::Ok)->setFocus();
                delete sheet;
            }
        }
    }
}

void SheetLifetimeTest::loopEndsUnseen_data()
{
    QTest::addColumn<Hide>("hide");
    const auto row = [](const char *name, const Hide &hide) { QTest::newRow(name) << hide; };
    row("accept", [](QDialog &dialog, QStackedWidget &) { dialog.accept(); });
    row("reject", [](QDialog &dialog, QStackedWidget &) { dialog.reject(); });
    row("done", [](QDialog &dialog, QStackedWidget &) { dialog.done(3); });
    row("hide", [](QDialog &dialog, QStackedWidget &) { dialog.hide(); });
    row("page turned", [](QDialog &, QStackedWidget &stack) { stack.setCurrentIndex(1); });
    row("stack hidden", [](QDialog &, QStackedWidget &stack) { stack.hide(); });
    row("mask hidden",
        [](QDialog &dialog, QStackedWidget &) { dialog.findChild<KovaMask *>()->hide(); });
    row("mask moved out", [](QDialog &dialog, QStackedWidget &) {
        dialog.findChild<KovaMask *>()->setParent(nullptr);
    });
}

void SheetLifetimeTest::loopEndsUnseen()
{
    QFETCH(Hide, hide);
    QWidget other; // keeps the application alive
    other.show();
    QDialog dialog;
    QStackedWidget stack(&dialog);
    stack.addWidget(new QWidget);
    stack.addWidget(new QLineEdit);
    dialog.resize(700, 400);
    dialog.show();
    const QPointer<KovaMessageSheet> sheet =
        new KovaMessageSheet(KovaMessageSheet::Question, "Go?", stack.widget(0));
    KovaMask::createMask(sheet, stack.widget(0), QColor(0, 0, 0, 20));
    const QPointer<QWidget> mask = sheet->parentWidget();
    QSignalSpy finished(sheet, &KovaSheet::finished);
    soon([&] { hide(dialog, stack); });
    QCOMPARE(sheet->exec(), 0);
    QCOMPARE(finished.count(), 1);
    // One that is out of sight from the start ends as well, and the window is its user's again.
    if (stack.currentIndex() == 1)
        QCOMPARE(sheet->exec(), 0);
    QVERIFY(dialog.isHidden() || dialog.close());
    delete mask;
}

void SheetLifetimeTest::sheetDiesInFinished()
{
    const std::unique_ptr<QWidget> window(newWindow());
    auto *sheet = newSheet(window.get());
    connect(sheet, &KovaSheet::finished, [sheet] { delete sheet; });
    soon([&] { sheet->button(QMessageBox::Ok)->click(); });
    QCOMPARE(sheet->exec(), 1024);
}

void SheetLifetimeTest::panelDiesAroundASheetWithoutMask()
{
    const std::unique_ptr<QWidget> window(newWindow());
    auto *panel = new QWidget(window.get());
    panel->show();
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", panel);
    soon([&] { delete panel; });
    QCOMPARE(sheet.exec(), 0);
}

void SheetLifetimeTest::windowDiesUnderTheShortcuts()
{
    const std::function<int(QWidget *)> shortcuts[] = {
        [](QWidget *window) { return showInfoMsg("", "text", window), 0; },
        [](QWidget *window) { return showWarningMsg("", "text", window), 0; },
        [](QWidget *window) { return showWarningMsg("", "text", "details", window), 0; },
        [](QWidget *window) { return showUpgradingMsg("", "text", window), 0; },
        [](QWidget *window) { return showConfirmMsg("", "text", window); },
        [](QWidget *window) {
            return showConfirmMsgCustomBtn("", "text", {"a", "b"}, window);
        },
    };
    for (const auto &shortcut : shortcuts) {
        QWidget *window = newWindow();
        soon([&] { delete window; });
        QCOMPARE(shortcut(window), 0);
    }
}

void SheetLifetimeTest::execInsideExec()
{
    for (const bool windowDies : {false, true}) {
        const QPointer<QWidget> window = newWindow();
        KovaMessageSheet *sheet = newSheet(window);
        int inner = -1;
        soon([&] {
            soon([&] {
                if (windowDies)
                    delete window;
                else
                    sheet->done(77);
            });
            inner = sheet->exec();
        });
        QCOMPARE(sheet->exec(), windowDies ? 0 : 77);
        QCOMPARE(inner, windowDies ? 0 : 77);
        delete window;
    }
}

void SheetLifetimeTest::quitEndsTheLoop()
{
    const std::unique_ptr<QWidget> window(newWindow());
    KovaMessageSheet *sheet = newSheet(window.get());
    QSignalSpy finished(sheet, &KovaSheet::finished);
    int result = -1;
    soon([&] {
        soon([] { QCoreApplication::exit(42); });
        result = sheet->exec();
    });
    QCOMPARE(QCoreApplication::exec(), 42);
    QCOMPARE(result, 0);
    QVERIFY(!sheet->isVisible());
    QCOMPARE(finished, QList<QList<QVariant>>{{0}});
}

void SheetLifetimeTest::animatedSheetsEnd()
{
    const std::unique_ptr<QWidget> window(newWindow());
    const QString movie = themeFolder() + "/images/processing.gif";
    QVERIFY(QFileInfo(movie).isFile());
    for (const QString &file : QStringList{movie, movie, "/no/such/movie.gif"}) {
        KovaMessageSheet sheet("Copying…", file, window.get());
        KovaMask::createMask(&sheet, window.get(), QColor(0, 0, 0, 20));
        QTimer::singleShot(50, &sheet, &KovaMessageSheet::quit);
        QCOMPARE(sheet.exec(), 0);
    }
}

QTEST_MAIN(SheetLifetimeTest)
#include "sheet-lifetime-test.moc"
