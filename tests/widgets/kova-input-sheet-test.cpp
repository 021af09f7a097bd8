#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <functional>

namespace {

constexpr int accepted = 1024;
constexpr int refused = 8388608;

} // namespace

class KovaInputSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup();
    void widthFollowsTheParent();
    void isBuiltFromStylesAndStrings();
    void heightFitsThePrompt();
    void keysEndTheSheet_data();
    void keysEndTheSheet();
    void spaceIsText();
    void selectedTextStaysSelected();
    void tabStaysInside();
    void swallowsOtherKeys();
    void windowCannotBeClosed();
    void closingAnUnblockedWindowEnds();
    void doneInsideAndOutsideARun();
    void windowDiesDuringTheRun_data();
    void windowDiesDuringTheRun();
    void sheetDiesInItsOwnSignal();

private:
    // Runs @p sheet over the window; @p act is called when it is up, with the focus in it.
    int run(KovaInputSheet *sheet, const std::function<void()> &act);
    void press(int key, Qt::KeyboardModifiers modifiers = {});

    QPointer<QWidget> m_window;
    QLineEdit *m_below = nullptr;
};

void KovaInputSheetTest::init()
{
    m_window = new QWidget;
    m_window->resize(700, 400);
    auto *layout = new QVBoxLayout(m_window);
    m_below = new QLineEdit;
    layout->addWidget(new QPushButton(QStringLiteral("&Below")));
    layout->addWidget(m_below);
    layout->addWidget(new QPushButton(QStringLiteral("After")));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    m_below->setFocus();
}

void KovaInputSheetTest::cleanup()
{
    delete m_window;
}

int KovaInputSheetTest::run(KovaInputSheet *sheet, const std::function<void()> &act)
{
    QPointer<KovaInputSheet> alive(sheet);
    QTimer::singleShot(0, sheet, [&] {
        act();
        if (alive && QTest::currentTestFailed())
            alive->quit();
    });
    return sheet->exec();
}

void KovaInputSheetTest::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window->windowHandle(), Qt::Key(key), modifiers);
}

void KovaInputSheetTest::widthFollowsTheParent()
{
    const auto widthIn = [](double designWidth) {
        QWidget parent;
        parent.resize(qRound(designWidth * DPIinfo::getInstance()->getDPI()), 300);
        return KovaInputSheet(&parent).width();
    };
    QCOMPARE(widthIn(400), kovaPx(360));
    QCOMPARE(widthIn(520), kovaPx(480));
    QCOMPARE(widthIn(2000), kovaPx(480));
    QVERIFY(widthIn(10) >= 0);
    // 518 design pixels are a whole number at every scale that tests run at.
    QCOMPARE(widthIn(518), kovaPx(478));
}

void KovaInputSheetTest::isBuiltFromStylesAndStrings()
{
    KovaInputSheet sheet(QStringLiteral("Name &amp; <b style='font-size: 10px'>place</b>"),
                         m_window);
    auto *ok = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok));
    const QAbstractButton *second = sheet.button(QMessageBox::Discard);
    QCOMPARE(ok->text(), QStringLiteral("OK"));
    QCOMPARE(second->text(), QStringLiteral("Cancel"));
    QVERIFY(ok->isDefault());
    QVERIFY(!sheet.button(QMessageBox::Cancel));
    QCOMPARE(ok->styleSheet(), getStyleSheet("component.apply_button", false));
    QCOMPARE(second->styleSheet(), getStyleSheet("component.cancel_button", false));
    QCOMPARE(sheet.styleSheet(), getStyleSheet("component.message_sheet_other", false));
    QCOMPARE(sheet.getLineEdit()->styleSheet(), getStyleSheet("component.lineedit", false));
    QCOMPARE(sheet.getLineEdit()->height(), kovaPx(28));
    QCOMPARE(sheet.findChild<MessageLabel *>()->text(),
             QStringLiteral("<p style='line-height: %1px;'>Name &amp; <b style='font-size: "
                            "%2px'>place</b></p>")
                 .arg(kovaPx(20))
                 .arg(kovaPx(10)));
    QCOMPARE(QAccessible::queryAccessibleInterface(sheet.getLineEdit())->text(QAccessible::Name),
             QStringLiteral("Name & place"));
    QCOMPARE(sheet.getContent(), QString());
}

void KovaInputSheetTest::heightFitsThePrompt()
{
    KovaInputSheet sheet(QStringLiteral("Short"), m_window);
    KovaMask::createMask(&sheet, m_window, QColor(0, 0, 0, 20));
    sheet.showSheet();
    QCoreApplication::processEvents();
    const int heightBefore = sheet.height();
    sheet.setText(QStringLiteral("A good deal longer than a line of this sheet. ").repeated(4));
    QCoreApplication::processEvents();
    const auto *label = sheet.findChild<MessageLabel *>();
    QVERIFY(sheet.height() >= heightBefore + 2 * kovaPx(20));
    QCOMPARE(label->height(), label->heightForWidth(label->width()));
    QVERIFY(label->geometry().bottom() < sheet.getLineEdit()->y());
    QVERIFY(sheet.button(QMessageBox::Ok)->geometry().right()
            < sheet.button(QMessageBox::Discard)->x());
    sheet.done(0);
}

void KovaInputSheetTest::keysEndTheSheet_data()
{
    QTest::addColumn<int>("tabs");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("result");
    QTest::newRow("return in the text") << 0 << int(Qt::Key_Return) << accepted;
    QTest::newRow("enter in the text") << 0 << int(Qt::Key_Enter) << accepted;
    QTest::newRow("escape in the text") << 0 << int(Qt::Key_Escape) << refused;
    QTest::newRow("return on ok") << 1 << int(Qt::Key_Return) << accepted;
    QTest::newRow("space on ok") << 1 << int(Qt::Key_Space) << accepted;
    QTest::newRow("return on the second") << 2 << int(Qt::Key_Return) << refused;
    QTest::newRow("space on the second") << 2 << int(Qt::Key_Space) << refused;
    QTest::newRow("escape on ok") << 1 << int(Qt::Key_Escape) << refused;
}

void KovaInputSheetTest::keysEndTheSheet()
{
    QFETCH(int, tabs);
    QFETCH(int, key);
    QFETCH(int, result);
    KovaInputSheet sheet(QStringLiteral("Name"), m_window);
    KovaMask::createMask(&sheet, m_window, QColor(0, 0, 0, 20));
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    const int returned = run(&sheet, [&] {
        QCOMPARE(m_window->focusWidget(), sheet.getLineEdit());
        press(Qt::Key_H);
        press(Qt::Key_I);
        for (int i = 0; i < tabs; ++i)
            press(Qt::Key_Tab);
        press(key);
    });
    QCOMPARE(returned, result);
    QCOMPARE(finished, QList<QList<QVariant>>{{result}});
    QCOMPARE(sheet.getContent(), QStringLiteral("hi"));
    QVERIFY(!sheet.isVisible());
    QCOMPARE(m_window->focusWidget(), m_below);
}

void KovaInputSheetTest::spaceIsText()
{
    KovaInputSheet sheet(m_window);
    const int result = run(&sheet, [&] {
        press(Qt::Key_Space);
        QCOMPARE(sheet.getContent(), QStringLiteral(" "));
        sheet.setFocus(); // no widget of the sheet wants the key now
        press(Qt::Key_Space);
    });
    QCOMPARE(result, accepted);
}

void KovaInputSheetTest::selectedTextStaysSelected()
{
    KovaInputSheet sheet(m_window);
    sheet.getLineEdit()->setText(QStringLiteral("old name.txt"));
    sheet.getLineEdit()->setSelection(0, 8);
    QSignalSpy edited(sheet.getLineEdit(), &QLineEdit::editingFinished);
    run(&sheet, [&] {
        QCOMPARE(sheet.getLineEdit()->selectedText(), QStringLiteral("old name"));
        QCOMPARE(edited.count(), 0);
        press(Qt::Key_X);
        sheet.quit();
    });
    QCOMPARE(sheet.getContent(), QStringLiteral("x.txt"));
}

void KovaInputSheetTest::tabStaysInside()
{
    KovaInputSheet sheet(m_window);
    QWidget *edit = sheet.getLineEdit();
    QWidget *ok = sheet.button(QMessageBox::Ok);
    QWidget *second = sheet.button(QMessageBox::Discard);
    run(&sheet, [&] {
        for (QWidget *expected : {ok, second, edit, ok}) {
            press(Qt::Key_Tab);
            QCOMPARE(m_window->focusWidget(), expected);
        }
        for (QWidget *expected : {edit, second, ok}) {
            press(Qt::Key_Backtab, Qt::ShiftModifier);
            QCOMPARE(m_window->focusWidget(), expected);
        }
        m_below->setFocus();
        QCOMPARE(m_window->focusWidget(), ok);
        sheet.quit();
    });
    QCOMPARE(m_window->focusWidget(), m_below);
}

void KovaInputSheetTest::swallowsOtherKeys()
{
    int shortcuts = 0;
    auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_D), m_window);
    connect(shortcut, &QShortcut::activated, m_window, [&] { ++shortcuts; });
    QSignalSpy below(m_window->findChild<QPushButton *>(), &QPushButton::clicked);
    KovaInputSheet sheet(m_window);
    sheet.setFocusPolicy(Qt::StrongFocus);
    run(&sheet, [&] {
        sheet.setFocus();
        press(Qt::Key_D, Qt::ControlModifier);
        press(Qt::Key_B, Qt::AltModifier);
        press(Qt::Key_A);
        QVERIFY(sheet.isVisible());
        sheet.quit();
    });
    QCOMPARE(shortcuts, 0);
    QCOMPARE(below.count(), 0);
    QCOMPARE(m_below->text(), QString());
    press(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(shortcuts, 1);
}

void KovaInputSheetTest::windowCannotBeClosed()
{
    KovaInputSheet sheet(m_window);
    QCOMPARE(run(&sheet,
                 [&] {
                     QVERIFY(!m_window->close());
                     QVERIFY(m_window->isVisible());
                     sheet.done(7);
                 }),
             7);
    QVERIFY(m_window->close());
}

void KovaInputSheetTest::closingAnUnblockedWindowEnds()
{
    QWidget other; // keeps the application running
    other.show();
    KovaInputSheet sheet(m_window);
    sheet.setBlockWindowButton(false);
    QCOMPARE(run(&sheet, [&] { QVERIFY(m_window->close()); }), 0);
}

void KovaInputSheetTest::doneInsideAndOutsideARun()
{
    KovaInputSheet sheet(m_window);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.done(5);
    sheet.showSheet();
    QCOMPARE(m_window->focusWidget(), sheet.getLineEdit());
    sheet.buttonClick(sheet.button(QMessageBox::Discard));
    sheet.setDefaultButton(nullptr);
    QCOMPARE(run(&sheet, [&] { sheet.done(9); }), 9);
    QCOMPARE(finished, (QList<QList<QVariant>>{{5}, {refused}, {9}}));
}

void KovaInputSheetTest::windowDiesDuringTheRun_data()
{
    QTest::addColumn<bool>("onHeap");
    QTest::newRow("sheet on the stack") << false;
    QTest::newRow("sheet on the heap") << true;
}

void KovaInputSheetTest::windowDiesDuringTheRun()
{
    QFETCH(bool, onHeap);
    const auto die = [this] {
        press(Qt::Key_Q);
        delete m_window;
    };
    if (onHeap) {
        QPointer<KovaInputSheet> sheet = new KovaInputSheet(m_window);
        KovaMask::createMask(sheet, m_window, QColor(0, 0, 0, 20));
        QCOMPARE(run(sheet, die), 0);
        QVERIFY(!sheet);
    } else {
        KovaInputSheet sheet(m_window);
        KovaMask::createMask(&sheet, m_window, QColor(0, 0, 0, 20));
        QCOMPARE(run(&sheet, die), 0);
        QCOMPARE(sheet.getContent(), QStringLiteral("q"));
    }
}

void KovaInputSheetTest::sheetDiesInItsOwnSignal()
{
    QPointer<KovaInputSheet> sheet = new KovaInputSheet(QStringLiteral("Name"), m_window);
    connect(sheet, &KovaSheet::finished, m_window, [&] { delete sheet; });
    QCOMPARE(run(sheet, [&] { sheet->done(3); }), 3);
    QVERIFY(!sheet);
    QCOMPARE(m_window->focusWidget(), m_below);
}

QTEST_MAIN(KovaInputSheetTest)
#include "kova-input-sheet-test.moc"
