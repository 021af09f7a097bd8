// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <functional>

namespace {

constexpr int accepted = 1024;
constexpr int refused = 8388608;

} // namespace

// What the two kinds of sheets share is tested with message sheets; here is what may be wired
// differently.
class KovaInputSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { delete m_window; }
    void widthFollowsTheParent();
    void showsPromptAndButtons();
    void heightFitsThePrompt();
    void keysEndTheSheet_data();
    void keysEndTheSheet();
    void selectedTextStaysSelected();
    void windowCannotBeClosedUnlessAllowed();
    void doneInsideAndOutsideARun();
    void sheetDiesInItsOwnSignal();

private:
    // Runs @p sheet over the window; @p act is called when it is up, with the focus in it.
    int run(KovaInputSheet *sheet, const std::function<void()> &act);

    QPointer<QWidget> m_window;
    QLineEdit *m_below = nullptr;
};

void KovaInputSheetTest::init()
{
    m_window = new QWidget;
    m_window->resize(700, 400);
    m_below = new QLineEdit(m_window);
    showActive(m_window);
    m_below->setFocus();
}

int KovaInputSheetTest::run(KovaInputSheet *sheet, const std::function<void()> &act)
{
    const QPointer<KovaInputSheet> alive(sheet);
    QTimer::singleShot(0, sheet, [&] {
        act();
        if (alive && QTest::currentTestFailed())
            alive->quit();
    });
    return sheet->exec();
}

void KovaInputSheetTest::widthFollowsTheParent()
{
    const auto widthIn = [](double designWidth) {
        QWidget parent;
        parent.resize(qRound(designWidth * DPIinfo::getInstance()->getDPI()), 300);
        return KovaInputSheet(&parent).width();
    };
    QCOMPARE(widthIn(2000), kovaPx(480));
    QCOMPARE(widthIn(520), kovaPx(480));
    // 518 design pixels are a whole number at every scale that tests run at.
    QCOMPARE(widthIn(518), kovaPx(478));
    QVERIFY(widthIn(10) >= 0);
}

void KovaInputSheetTest::showsPromptAndButtons()
{
    KovaInputSheet sheet("Name &amp; <b style='font-size: 10px'>place</b>", m_window);
    QCOMPARE(sheet.button(QMessageBox::Ok)->text(), "OK");
    QCOMPARE(sheet.button(QMessageBox::Discard)->text(), "Cancel");
    QCOMPARE(sheet.getLineEdit()->styleSheet(), getStyleSheet("component.lineedit", false));
    QCOMPARE(sheet.findChild<MessageLabel *>()->text(),
             QString("<p style='line-height: %1px;'>Name &amp; <b style='font-size: %2px'>"
                     "place</b></p>")
                 .arg(kovaPx(20))
                 .arg(kovaPx(10)));
    QCOMPARE(spoken(sheet.getLineEdit()), "Name & place");
}

void KovaInputSheetTest::heightFitsThePrompt()
{
    KovaInputSheet sheet("Short", m_window);
    KovaMask::createMask(&sheet, m_window, QColor(0, 0, 0, 20));
    sheet.showSheet();
    QCoreApplication::processEvents();
    const int heightBefore = sheet.height();
    sheet.setText(QString("A good deal longer than a line of this sheet. ").repeated(4));
    QCoreApplication::processEvents();
    const auto *label = sheet.findChild<MessageLabel *>();
    QVERIFY(sheet.height() >= heightBefore + 2 * kovaPx(20));
    QCOMPARE(label->height(), label->heightForWidth(label->width()));
    QVERIFY(label->geometry().bottom() < sheet.getLineEdit()->y());
    QVERIFY(sheet.button(QMessageBox::Ok)->x() < sheet.button(QMessageBox::Discard)->x());
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
    QTest::newRow("space on ok") << 1 << int(Qt::Key_Space) << accepted;
    QTest::newRow("escape on ok") << 1 << int(Qt::Key_Escape) << refused;
    QTest::newRow("return on the second") << 2 << int(Qt::Key_Return) << refused;
    QTest::newRow("return after a round") << 3 << int(Qt::Key_Return) << accepted;
    QTest::newRow("space after the way back") << -1 << int(Qt::Key_Space) << refused;
}

void KovaInputSheetTest::keysEndTheSheet()
{
    QFETCH(int, tabs);
    QFETCH(int, key);
    QFETCH(int, result);
    KovaInputSheet sheet("Name", m_window);
    KovaMask::createMask(&sheet, m_window, QColor(0, 0, 0, 20));
    QWidget *const stops[] = {sheet.getLineEdit(), sheet.button(QMessageBox::Ok),
                              sheet.button(QMessageBox::Discard)};
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    const int returned = run(&sheet, [&] {
        for (const int letter : {Qt::Key_H, Qt::Key_Space, Qt::Key_I})
            press(m_window, letter);
        for (int i = 0; i < qAbs(tabs); ++i)
            press(m_window, tabs > 0 ? Qt::Key_Tab : Qt::Key_Backtab);
        QCOMPARE(m_window->focusWidget(), stops[(tabs + 3) % 3]);
        press(m_window, key);
    });
    QCOMPARE(returned, result);
    QCOMPARE(finished, QList<QList<QVariant>>{{result}});
    QCOMPARE(sheet.getContent(), "h i");
    QVERIFY(!sheet.isVisible());
    QCOMPARE(m_window->focusWidget(), m_below);
}

void KovaInputSheetTest::selectedTextStaysSelected()
{
    KovaInputSheet sheet(m_window);
    sheet.getLineEdit()->setText("old name.txt");
    sheet.getLineEdit()->setSelection(0, 8);
    QSignalSpy edited(sheet.getLineEdit(), &QLineEdit::editingFinished);
    run(&sheet, [&] {
        QCOMPARE(edited.count(), 0);
        press(m_window, Qt::Key_X);
        sheet.quit();
    });
    QCOMPARE(sheet.getContent(), "x.txt");
}

void KovaInputSheetTest::windowCannotBeClosedUnlessAllowed()
{
    QWidget other; // keeps the application running
    other.show();
    KovaInputSheet sheet(m_window);
    const int blocked = run(&sheet, [&] {
        QVERIFY(!m_window->close());
        sheet.done(7);
    });
    QCOMPARE(blocked, 7);
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

void KovaInputSheetTest::sheetDiesInItsOwnSignal()
{
    QPointer<KovaInputSheet> sheet = new KovaInputSheet("Name", m_window);
    connect(sheet, &KovaSheet::finished, m_window, [&] { delete sheet; });
    QCOMPARE(run(sheet, [&] { sheet->done(3); }), 3);
    QVERIFY(!sheet);
    QCOMPARE(m_window->focusWidget(), m_below);
}

QTEST_MAIN(KovaInputSheetTest)
#include "kova-input-sheet-test.moc"
