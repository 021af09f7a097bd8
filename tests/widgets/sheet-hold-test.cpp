// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/host-window.h"
#include "support/test-host.h"
#include "support/user-input.h"
#include "support/x11-window.h"

#include <QtTest>

#include <algorithm>

using Change = std::function<void(HostWindow &)>;
Q_DECLARE_METATYPE(Change)

// What a sheet takes from its window, and how the window gets it back.
class SheetHoldTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void closeButtonIsTakenAndGivenBack();
    void windowCannotBeClosed();
    void usableOverDisabledWidgets_data();
    void usableOverDisabledWidgets();
    void movedCarrierTakesTheHoldAlong();
    void sheetsEndInAnyOrder();
    void staysUpWhileHiddenForAMoment();

private:
    void key(Qt::Key key) { press(m_window.get(), key); }

    std::unique_ptr<HostWindow> m_window;
};

void SheetHoldTest::init()
{
    m_window = std::make_unique<HostWindow>();
    showActive(m_window.get());
    m_window->edit->setFocus();
}

void SheetHoldTest::closeButtonIsTakenAndGivenBack()
{
    const WId id = m_window->winId();
    const QVector<quint32> before{2, 0, 1, 0, 0};
    writeMotifHints(id, before);
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", m_window.get());
    bool taken = false;
    QTimer::singleShot(0, &sheet, [&] {
        const QVector<quint32> none{1, 0, 6, 0, 0};
        taken = QTest::qWaitFor([&] { return readMotifHints(id) == none; });
        sheet.quit();
    });
    QCOMPARE(sheet.exec(), 0);
    QVERIFY(taken);
    QTRY_COMPARE(readMotifHints(id), before);

    sheet.showSheet();
    QCOMPARE(readMotifHints(id), before);
    sheet.done(0);
    sheet.showSheetWithBlock();
    QTRY_COMPARE(readMotifHints(id).value(2), 6U);
    // Switched off meanwhile, it is given back all the same.
    sheet.setBlockWindowButton(false);
    sheet.done(0);
    QTRY_COMPARE(readMotifHints(id), before);
}

void SheetHoldTest::windowCannotBeClosed()
{
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", m_window.get());
    sheet.showSheet();
    QVERIFY(!m_window->close());
    requestClose(m_window->winId());
    QTest::qWait(100);
    QVERIFY(m_window->isVisible());
    sheet.quit();
    requestClose(m_window->winId());
    QTRY_VERIFY(!m_window->isVisible());
}

void SheetHoldTest::usableOverDisabledWidgets_data()
{
    QTest::addColumn<Change>("before");
    QTest::addColumn<Change>("meanwhile");
    QTest::addColumn<bool>("windowIsEnabled");
    QTest::addColumn<bool>("contentIsEnabled");
    const Change none = [](HostWindow &) {};
    const Change disableWindow = [](HostWindow &window) { window.setEnabled(false); };
    const Change enableWindow = [](HostWindow &window) { window.setEnabled(true); };
    const Change disableContent = [](HostWindow &w) { w.centralWidget()->setEnabled(false); };
    const Change switchTwice = [](HostWindow &window) {
        window.setEnabled(true);
        window.setEnabled(false);
    };
    QTest::newRow("window") << disableWindow << none << false << false;
    QTest::newRow("content") << disableContent << none << true << false;
    QTest::newRow("window, meanwhile") << none << disableWindow << false << false;
    QTest::newRow("content, meanwhile") << none << disableContent << true << false;
    QTest::newRow("enabled meanwhile") << disableWindow << enableWindow << true << true;
    QTest::newRow("enabled and disabled") << disableWindow << switchTwice << false << false;
}

void SheetHoldTest::usableOverDisabledWidgets()
{
    QFETCH(Change, before);
    QFETCH(Change, meanwhile);
    QFETCH(bool, windowIsEnabled);
    QFETCH(bool, contentIsEnabled);
    QWidget *const content = m_window->centralWidget();
    KovaInputSheet sheet("Name", content);
    before(*m_window);
    for (const bool byMouse : {false, true}) {
        QTimer::singleShot(0, &sheet, [&] {
            meanwhile(*m_window);
            QCOMPARE(m_window->isEnabled(), windowIsEnabled);
            QCOMPARE(content->isEnabled(), contentIsEnabled);
            click(m_window->button);
            key(Qt::Key_N);
            if (byMouse)
                click(sheet.button(QMessageBox::Ok));
            else
                key(Qt::Key_Return);
            sheet.quit();
        });
        QCOMPARE(sheet.exec(), 1024);
        QCOMPARE(m_window->isEnabled(), windowIsEnabled);
        QCOMPARE(content->isEnabled(), contentIsEnabled);
        QCOMPARE(sheet.isEnabled(), contentIsEnabled);
        QCOMPARE(sheet.getLineEdit()->isEnabled(), contentIsEnabled);
    }
    QCOMPARE(sheet.getContent(), "nn");
    QCOMPARE(m_window->clicks, 0);
    QCOMPARE(m_window->edit->text(), "");
    m_window->setEnabled(true);
    content->setEnabled(true);
    QVERIFY(sheet.getLineEdit()->isEnabled());

    // A sheet that the program itself switched off stays so.
    sheet.setEnabled(false);
    sheet.showSheet();
    QVERIFY(!sheet.isEnabled());
}

void SheetHoldTest::movedCarrierTakesTheHoldAlong()
{
    const QVector<quint32> before{2, 0, 1, 0, 0};
    HostWindow other;
    showActive(&other);
    for (const WId id : {other.winId(), m_window->winId()})
        writeMotifHints(id, before);
    showActive(m_window.get());
    m_window->edit->setFocus();
    auto *carrier = new QWidget(m_window.get());
    carrier->resize(700, 400);
    carrier->show();
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", carrier);
    sheet.showSheetWithBlock();

    carrier->setParent(&other);
    carrier->show();
    QTRY_COMPARE(readMotifHints(m_window->winId()), before);
    QTRY_COMPARE(readMotifHints(other.winId()).value(2), 6U);
    QCOMPARE(m_window->focusWidget(), m_window->edit);
    key(Qt::Key_X);
    QCOMPARE(m_window->edit->text(), "x");
    QVERIFY(m_window->close());

    showActive(&other);
    QVERIFY(!other.close());
    click(&other, QPoint(780, 480));
    press(&other, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(other.presses + other.shortcuts, 0);
    QVERIFY(sheet.isVisible());
    press(&other, Qt::Key_Escape);
    QVERIFY(!sheet.isVisible());
    QTRY_COMPARE(readMotifHints(other.winId()), before);
}

void SheetHoldTest::sheetsEndInAnyOrder()
{
    const WId id = m_window->winId();
    const QVector<quint32> before{2, 0, 1, 0, 0};
    writeMotifHints(id, before);
    QVector<int> order{0, 1, 2};
    do {
        for (const bool deleted : {false, true}) {
            QVector<KovaMessageSheet *> sheets;
            for (int i = 0; i < order.size(); ++i) {
                sheets << new KovaMessageSheet(KovaMessageSheet::Question, "Go?", m_window.get());
                sheets.last()->showSheetWithBlock();
            }
            // One that is up already does not get above the later ones by that.
            sheets.first()->showSheet();
            for (const int next : order) {
                QCOMPARE(readMotifHints(id), (QVector<quint32>{1, 0, 6, 0, 0}));
                key(Qt::Key_X);
                if (deleted)
                    delete sheets.at(next);
                else
                    sheets.at(next)->done(0);
            }
            QTRY_COMPARE(readMotifHints(id), before);
            QCOMPARE(m_window->focusWidget(), m_window->edit);
            if (!deleted)
                qDeleteAll(sheets);
        }
    } while (std::next_permutation(order.begin(), order.end()));
    QCOMPARE(m_window->edit->text(), "");
}

void SheetHoldTest::staysUpWhileHiddenForAMoment()
{
    auto *stack = new QStackedWidget;
    stack->addWidget(new QWidget);
    stack->addWidget(new QWidget);
    m_window->setCentralWidget(stack);
    QTRY_VERIFY(stack->isVisible());
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", stack->widget(0));
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.showSheet();
    const QList<std::function<void()>> moments = {
        [&] {
            m_window->hide();
            m_window->show();
        },
        [&] {
            stack->setCurrentIndex(1);
            key(Qt::Key_Return);
            stack->setCurrentIndex(0);
        },
        [&] {
            m_window->showMinimized();
            QTRY_VERIFY(!m_window->windowHandle()->isExposed());
            QTest::qWait(300);
            m_window->showNormal();
        },
    };
    for (const auto &moment : moments) {
        moment();
        showActive(m_window.get());
        QTest::qWait(300);
        QCOMPARE(finished.count(), 0);
        QVERIFY(sheet.isVisible());
        QVERIFY(sheet.isAncestorOf(m_window->focusWidget()));
    }
    key(Qt::Key_Return);
    QCOMPARE(finished.count(), 1);
}

QTEST_MAIN(SheetHoldTest)
#include "sheet-hold-test.moc"
