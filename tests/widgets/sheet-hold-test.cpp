// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/answers.h"
#include "support/host-window.h"
#include "support/x11-window.h"

#include <algorithm>

namespace {

using Hints = QVector<quint32>;

int openSockets()
{
    int sockets = 0;
    for (const QFileInfo &file : QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System))
        sockets += file.symLinkTarget().contains("socket:");
    return sockets;
}

const Hints ownHints{2, 0, 1, 0, 0};
const Hints noFunctions{1, 0, 6, 0, 0};

} // namespace

// What a sheet, or a host that asks for it, takes from a window, and how the window gets it back.
class SheetHoldTest : public HostWindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hintsComeBackAsTheyWere();
    void usableOverDisabledWidgets_data();
    void usableOverDisabledWidgets();
    void movedCarrierTakesTheHoldAlong();
    void sheetsEndInAnyOrder();
    void staysUpWhileHiddenForAMoment();

private:
    [[nodiscard]] Hints hints() const { return readMotifHints(m_window->winId()); }

    void enable(bool enabled)
    {
        SHAPISetCloseButtonOfWindowEnable(m_window.get(), enabled, &m_saved);
    }

    void *m_saved = nullptr;
};

void SheetHoldTest::init()
{
    HostWindowTest::init();
    writeMotifHints(m_window->winId(), ownHints);
}

void SheetHoldTest::hintsComeBackAsTheyWere()
{
    const QPair<Hints, Hints> cases[] = {
        {ownHints, ownHints},
        {{3, 62, 126, 1, 9}, {3, 62, 126, 1, 9}},
        // Too short, the value comes back padded.
        {{7, 5, 3, 1}, {7, 5, 3, 1, 0}},
        // Where there was nothing, the functions come back as the window manager's own.
        {{}, {0, 0, 1, 0, 1}},
    };
    enable(false);
    enable(true);
    const int sockets = openSockets();
    for (const auto &[before, after] : cases) {
        writeMotifHints(m_window->winId(), before);
        enable(false);
        // Whatever the last two items were, the window manager is told: no functions.
        QCOMPARE(hints().mid(0, 3), noFunctions.mid(0, 3));
        // What is switched off twice is given back the second time.
        void *first = m_saved;
        enable(false);
        enable(true);
        QCOMPARE(hints().mid(0, 3), noFunctions.mid(0, 3));
        m_saved = first;
        enable(true);
        QCOMPARE(m_saved, nullptr);
        enable(true);
        QCOMPARE(hints(), after);
    }
    QVERIFY2(openSockets() <= sockets, "a connection to the server is left open");

    QWidget never;
    SHAPISetCloseButtonOfWindowEnable(&never, false, &m_saved);
    SHAPISetCloseButtonOfWindowEnable(nullptr, false, &m_saved);
    QCOMPARE(m_saved, nullptr);
}

void SheetHoldTest::usableOverDisabledWidgets_data()
{
    QTest::addColumn<bool>("windowIsDisabled");
    QTest::addColumn<Change>("meanwhile");
    const Change nothing = [](HostWindow &) {};
    const Change enableWindow = [](HostWindow &window) { window.setEnabled(true); };
    const Change disableContent = [](HostWindow &w) { w.centralWidget()->setEnabled(false); };
    QTest::newRow("window") << true << nothing;
    QTest::newRow("content, meanwhile") << false << disableContent;
    QTest::newRow("enabled meanwhile") << true << enableWindow;
}

void SheetHoldTest::usableOverDisabledWidgets()
{
    QFETCH(bool, windowIsDisabled);
    QFETCH(Change, meanwhile);
    QWidget *const content = m_window->centralWidget();
    KovaInputSheet sheet("Name", content);
    m_window->setDisabled(windowIsDisabled);
    bool isEnabled = false;
    bool isTaken = false;
    const int answer = run(sheet, [&] {
        meanwhile(*m_window);
        isEnabled = content->isEnabled();
        isTaken = QTest::qWaitFor([&] { return hints() == noFunctions; });
        click(m_window->button);
        key(Qt::Key_N);
        click(sheet.button(QMessageBox::Ok));
        sheet.quit();
    });
    QCOMPARE(answer, accepted);
    QVERIFY(isTaken);
    QCOMPARE(content->isEnabled(), isEnabled);
    QCOMPARE(sheet.getLineEdit()->isEnabled(), isEnabled);
    QTRY_COMPARE(hints(), ownHints);
    QCOMPARE(sheet.getContent(), "n");
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
    HostWindow other;
    showActive(&other);
    writeMotifHints(other.winId(), ownHints);
    showActive(m_window.get());
    auto *carrier = new QWidget(m_window.get());
    carrier->resize(700, 400);
    carrier->show();
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", carrier);
    sheet.showSheetWithBlock();

    carrier->setParent(&other);
    carrier->show();
    QTRY_COMPARE(hints(), ownHints);
    QTRY_COMPARE(readMotifHints(other.winId()), noFunctions);
    key(Qt::Key_X);
    QCOMPARE(m_window->edit->text(), "x");
    QVERIFY(m_window->close());

    showActive(&other);
    QVERIFY(!other.close());
    // Let go meanwhile, the close button is given back all the same.
    sheet.setBlockWindowButton(false);
    click(&other, QPoint(780, 480));
    press(&other, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(other.presses + other.shortcuts, 0);
    press(&other, Qt::Key_Escape);
    QVERIFY(!sheet.isVisible());
    QTRY_COMPARE(readMotifHints(other.winId()), ownHints);
}

void SheetHoldTest::sheetsEndInAnyOrder()
{
    QVector<int> order{0, 1, 2};
    do {
        for (const bool deleted : {false, true}) {
            QVector<KovaMessageSheet *> sheets(order.size());
            for (KovaMessageSheet *&sheet : sheets) {
                sheet = new KovaMessageSheet(KovaMessageSheet::Question, "Go?", m_window.get());
                sheet->showSheetWithBlock();
            }
            // One that is up already does not get above the later ones by that.
            sheets.first()->showSheet();
            QList<KovaMessageSheet *> up = sheets.toList();
            const QString way = QString("%1%2%3").arg(order[0]).arg(order[1]).arg(order[2]);
            for (const int next : order) {
                const bool isHeld = hints() == noFunctions;
                QVERIFY2(isHeld && up.last()->isAncestorOf(m_window->focusWidget()),
                         qPrintable(way + (deleted ? " deleted" : " done")));
                key(Qt::Key_X);
                up.removeOne(sheets.at(next));
                if (deleted)
                    delete sheets.at(next);
                else
                    sheets.at(next)->done(0);
            }
            QTRY_COMPARE(hints(), ownHints);
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
    for (const bool withItsWindow : {true, false}) {
        if (withItsWindow) {
            m_window->hide();
        } else {
            stack->setCurrentIndex(1);
            key(Qt::Key_Return);
            stack->setCurrentIndex(0);
        }
        showActive(m_window.get());
        QTest::qWait(300);
        QCOMPARE(finished.count(), 0);
        QVERIFY(sheet.isVisible());
        QVERIFY(sheet.isAncestorOf(m_window->focusWidget()));
        // This sheet did not ask for the close button.
        QCOMPARE(hints(), ownHints);
    }
    key(Qt::Key_Return);
    QCOMPARE(finished.count(), 1);
}

QTEST_MAIN(SheetHoldTest)
#include "sheet-hold-test.moc"
