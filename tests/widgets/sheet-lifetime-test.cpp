#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

namespace {

QWidget *newWindow()
{
    auto *window = new QWidget;
    auto *edit = new QLineEdit(window);
    window->resize(700, 400);
    window->show();
    edit->setFocus();
    return window;
}

KovaMessageSheet *newSheet(QWidget *window)
{
    auto *sheet = new KovaMessageSheet(KovaMessageSheet::Question, QStringLiteral("Go?"), window);
    KovaMask::createMask(sheet, window, QColor(0, 0, 0, 20));
    return sheet;
}

template<typename Function>
void soon(Function function)
{
    QTimer::singleShot(0, qApp, function);
}

} // namespace

// Everything that can die while the loop of a sheet runs.
class SheetLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void windowDiesAroundAHeapSheet();
    void windowDiesAroundAStackSheet();
    void windowDiesAroundASheetWithoutMask();
    void maskDies();
    void sheetDies();
    void sheetDiesInFinished();
    void closedWindowDeletesItself();
    void shortcutsSurvive_data();
    void shortcutsSurvive();
    void execInsideExec();
    void deathInsideExecInsideExec();
    void quitEndsTheLoop();
    void windowDiesAroundAShownSheet();
    void animatedSheetsEnd();
};

void SheetLifetimeTest::windowDiesAroundAHeapSheet()
{
    QWidget *window = newWindow();
    const QPointer<KovaMessageSheet> sheet = newSheet(window);
    soon([&] { delete window; });
    QCOMPARE(sheet->exec(), 0);
    QVERIFY(!sheet);
}

void SheetLifetimeTest::windowDiesAroundAStackSheet()
{
    QWidget *window = newWindow();
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Go?"), window);
    KovaMask::createMask(&sheet, window, QColor(0, 0, 0, 20));
    soon([&] { delete window; });
    QCOMPARE(sheet.exec(), 0);
    QVERIFY(!sheet.isVisible());
    QCOMPARE(sheet.parent(), nullptr);
}

void SheetLifetimeTest::windowDiesAroundASheetWithoutMask()
{
    QWidget *window = newWindow();
    auto *panel = new QWidget(window);
    panel->show();
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Go?"), panel);
    soon([&] { delete panel; });
    QCOMPARE(sheet.exec(), 0);
    delete window;
}

void SheetLifetimeTest::maskDies()
{
    const std::unique_ptr<QWidget> window(newWindow());
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Go?"), window.get());
    KovaMask::createMask(&sheet, window.get(), QColor(0, 0, 0, 20));
    soon([&] { delete sheet.parent(); });
    QCOMPARE(sheet.exec(), 0);
    // The window is its user's again.
    window->activateWindow();
    QTest::keyClick(window->windowHandle(), Qt::Key_A);
    QTRY_COMPARE(window->findChild<QLineEdit *>()->text(), QStringLiteral("a"));
}

void SheetLifetimeTest::sheetDies()
{
    const std::unique_ptr<QWidget> window(newWindow());
    auto *sheet = newSheet(window.get());
    soon([&] { delete sheet; });
    QCOMPARE(sheet->exec(), 0);
    QTest::keyClick(window->windowHandle(), Qt::Key_A);
    QTRY_COMPARE(window->findChild<QLineEdit *>()->text(), QStringLiteral("a"));
}

void SheetLifetimeTest::sheetDiesInFinished()
{
    const std::unique_ptr<QWidget> window(newWindow());
    auto *sheet = newSheet(window.get());
    connect(sheet, &KovaSheet::finished, [sheet] { delete sheet; });
    soon([&] { sheet->button(QMessageBox::Ok)->click(); });
    QCOMPARE(sheet->exec(), 1024);
}

void SheetLifetimeTest::closedWindowDeletesItself()
{
    QWidget other;
    other.show();
    QPointer<QWidget> window = newWindow();
    window->setAttribute(Qt::WA_DeleteOnClose);
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Go?"), window);
    KovaMask::createMask(&sheet, window, QColor(0, 0, 0, 20));
    sheet.setBlockWindowButton(false);
    soon([&] { window->close(); });
    QCOMPARE(sheet.exec(), 0);
    sheet.setParent(nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(!window);
}

void SheetLifetimeTest::shortcutsSurvive_data()
{
    QTest::addColumn<int>("shortcut");
    const char *const names[] = {"info",    "warning",        "warning with details",
                                 "confirm", "custom confirm", "upgrading"};
    for (int i = 0; i < 6; ++i)
        QTest::newRow(names[i]) << i;
}

void SheetLifetimeTest::shortcutsSurvive()
{
    QFETCH(int, shortcut);
    QWidget *window = newWindow();
    soon([&] { delete window; });
    const QString text = QStringLiteral("text");
    switch (shortcut) {
    case 0:
        showInfoMsg(text, text, window);
        break;
    case 1:
        showWarningMsg(text, text, window);
        break;
    case 2:
        showWarningMsg(text, text, text, window);
        break;
    case 3:
        QCOMPARE(showConfirmMsg(text, text, window), 0);
        break;
    case 4:
        QCOMPARE(showConfirmMsgCustomBtn(text, text, {text, text}, window), 0);
        break;
    default:
        showUpgradingMsg(text, text, window);
        break;
    }
}

void SheetLifetimeTest::execInsideExec()
{
    const std::unique_ptr<QWidget> window(newWindow());
    KovaMessageSheet *sheet = newSheet(window.get());
    int inner = -1;
    soon([&] {
        soon([&] { sheet->done(77); });
        inner = sheet->exec();
    });
    QCOMPARE(sheet->exec(), 77);
    QCOMPARE(inner, 77);
}

void SheetLifetimeTest::deathInsideExecInsideExec()
{
    QWidget *window = newWindow();
    KovaMessageSheet *sheet = newSheet(window);
    int inner = -1;
    soon([&] {
        soon([&] { delete window; });
        inner = sheet->exec();
    });
    QCOMPARE(sheet->exec(), 0);
    QCOMPARE(inner, 0);
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

void SheetLifetimeTest::windowDiesAroundAShownSheet()
{
    QWidget *window = newWindow();
    const QPointer<KovaMessageSheet> sheet = newSheet(window);
    sheet->showSheetWithBlock();
    delete window;
    QVERIFY(!sheet);
}

void SheetLifetimeTest::animatedSheetsEnd()
{
    const std::unique_ptr<QWidget> window(newWindow());
    const QString movie = themeFolder() + QLatin1String("/images/processing.gif");
    QVERIFY(QFileInfo(movie).isFile());
    for (int i = 0; i < 3; ++i) {
        KovaMessageSheet sheet(QStringLiteral("Copying…"), movie, window.get());
        KovaMask::createMask(&sheet, window.get(), QColor(0, 0, 0, 20));
        QTimer::singleShot(50, &sheet, &KovaMessageSheet::quit);
        QCOMPARE(sheet.exec(), 0);
    }
}

QTEST_MAIN(SheetLifetimeTest)
#include "sheet-lifetime-test.moc"
