// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/answers.h"
#include "support/host-window.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>

// What the two kinds of sheets share is tested with message sheets; here is what may be wired
// differently.
class KovaInputSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void showsPromptAndButtons();
    void keysEndTheSheet();
    void selectedTextStaysSelected();
    void windowCannotBeClosedUnlessAllowed();
    void doneInsideAndOutsideARun();

private:
    // Runs @p sheet over the window; @p act is called when it is up, with the focus in it.
    template<typename Sheet>
    int run(Sheet *sheet, const std::function<void()> &act)
    {
        QTimer::singleShot(0, sheet, act);
        return sheet->exec();
    }

    std::unique_ptr<HostWindow> m_window;
};

void KovaInputSheetTest::init()
{
    m_window = std::make_unique<HostWindow>();
    showActive(m_window.get());
    m_window->edit->setFocus();
}

void KovaInputSheetTest::showsPromptAndButtons()
{
    KovaInputSheet sheet("Name &amp; <b style='font-size: 10px'>place</b>", m_window.get());
    QCOMPARE(sheet.button(QMessageBox::Ok)->text(), "OK");
    QCOMPARE(sheet.button(QMessageBox::Discard)->text(), "Cancel");
    QCOMPARE(sheet.getLineEdit()->styleSheet(), getStyleSheet("component.lineedit", false));
    QCOMPARE(spoken(sheet.getLineEdit()), "Name & place");
    const auto *label = sheet.findChild<MessageLabel *>();
    for (const auto &[name, pixels] : {std::pair("line-height", 20), {"font-size", 10}})
        QVERIFY(label->text().contains(QString("%1: %2px").arg(name).arg(kovaPx(pixels))));

    KovaMask::createMask(&sheet, m_window.get(), Qt::black);
    sheet.showSheet();
    const int height = sheet.height();
    sheet.setText(QString("A good deal longer than a line of this sheet. ").repeated(4));
    QCoreApplication::processEvents();
    QVERIFY(sheet.height() >= height + 2 * kovaPx(20));
    QVERIFY(label->geometry().bottom() < sheet.getLineEdit()->y());
}

void KovaInputSheetTest::keysEndTheSheet()
{
    const std::tuple<const char *, int, Qt::Key, int> cases[] = {
        {"return in the text", 0, Qt::Key_Return, accepted},
        {"escape in the text", 0, Qt::Key_Escape, refused},
        {"space on ok", 1, Qt::Key_Space, accepted},
        {"return on the second", 2, Qt::Key_Return, refused},
    };
    for (const auto &[name, tabs, key, expected] : cases) {
        KovaInputSheet sheet("Name", m_window.get());
        const int result = run(&sheet, [&, tabs = tabs, key = key] {
            for (const int letter : {Qt::Key_H, Qt::Key_Space, Qt::Key_I})
                press(m_window.get(), letter);
            for (int i = 0; i < tabs; ++i)
                press(m_window.get(), Qt::Key_Tab);
            press(m_window.get(), key);
            sheet.quit();
        });
        QVERIFY2(result == expected, name);
        QCOMPARE(sheet.getContent(), "h i");
        QCOMPARE(m_window->focusWidget(), m_window->edit);
    }
}

void KovaInputSheetTest::selectedTextStaysSelected()
{
    KovaInputSheet sheet(m_window.get());
    sheet.getLineEdit()->setText("old name.txt");
    sheet.getLineEdit()->setSelection(0, 8);
    run(&sheet, [&] {
        press(m_window.get(), Qt::Key_X);
        sheet.quit();
    });
    QCOMPARE(sheet.getContent(), "x.txt");
}

void KovaInputSheetTest::windowCannotBeClosedUnlessAllowed()
{
    QWidget other; // keeps the application running
    other.show();
    KovaInputSheet sheet(m_window.get());
    for (const bool blocked : {true, false}) {
        sheet.setBlockWindowButton(blocked);
        const int result = run(&sheet, [&] {
            QCOMPARE(m_window->close(), !blocked);
            if (blocked)
                sheet.done(7);
        });
        QCOMPARE(result, blocked ? 7 : 0);
    }
}

void KovaInputSheetTest::doneInsideAndOutsideARun()
{
    const auto check = [this](auto &&sheet) {
        QSignalSpy finished(&sheet, &KovaSheet::finished);
        sheet.done(5);
        sheet.showSheet();
        QVERIFY(sheet.isAncestorOf(m_window->focusWidget()));
        sheet.buttonClick(sheet.button(QMessageBox::Discard));
        sheet.quit();
        sheet.setDefaultButton(nullptr);
        // A result of the time before must not end the next run.
        QCOMPARE(run(&sheet, [&] { sheet.done(9); }), 9);
        QCOMPARE(finished, (QList<QList<QVariant>>{{5}, {refused}, {0}, {9}}));
        QVERIFY(!sheet.isVisible());
    };
    check(KovaInputSheet(m_window.get()));
    check(KovaMessageSheet(KovaMessageSheet::Question, m_window.get()));

    auto *dying = new KovaInputSheet(m_window.get());
    connect(dying, &KovaSheet::finished, m_window.get(), [dying] { delete dying; });
    QCOMPARE(run(dying, [&] { dying->done(3); }), 3);
    QCOMPARE(m_window->focusWidget(), m_window->edit);
}

QTEST_MAIN(KovaInputSheetTest)
#include "kova-input-sheet-test.moc"
