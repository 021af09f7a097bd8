// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/host-window.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// One event for each way to use a widget.
std::vector<std::unique_ptr<QEvent>> usesOfAWidget(const QMimeData *dragged)
{
    static QTouchDevice screen;
    const QPointF at(5, 5);
    const auto none = Qt::NoButton;
    std::vector<std::unique_ptr<QEvent>> uses;
    const auto add = [&uses](QEvent *event) { uses.emplace_back(event); };
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                            QEvent::MouseButtonDblClick, QEvent::MouseMove})
        add(new QMouseEvent(type, at, Qt::LeftButton, Qt::LeftButton, {}));
    for (const auto type : {QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd})
        add(new QTouchEvent(type, &screen));
    for (const auto type : {QEvent::TabletPress, QEvent::TabletMove, QEvent::TabletRelease})
        add(new QTabletEvent(type, at, at, 0, 0, 1, 0, 0, 0, 0, 0, {}, 0, none, none));
    add(new QWheelEvent(at, at, {}, {0, 120}, none, {}, Qt::NoScrollPhase, false));
    add(new QContextMenuEvent(QContextMenuEvent::Mouse, at.toPoint()));
    add(new QNativeGestureEvent(Qt::ZoomNativeGesture, &screen, at, at, at, 1, 0, 0));
    add(new QHelpEvent(QEvent::ToolTip, at.toPoint(), at.toPoint()));
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
        add(new QKeyEvent(type, Qt::Key_X, {}, "x"));
    add(new QInputMethodEvent("x", {}));
    add(new QDragMoveEvent(at.toPoint(), Qt::CopyAction, dragged, none, {}));
    add(new QDropEvent(at, Qt::CopyAction, dragged, none, {}));
    add(new QDragEnterEvent(at.toPoint(), Qt::CopyAction, dragged, none, {}));
    return uses;
}

// Counts what a person does to a widget.
class UseCounter : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        for (const auto &use : usesOfAWidget(nullptr))
            uses += use->type() == event->type() ? 1 : 0;
        return false;
    }
    int uses = 0;
};

using Change = std::function<void(HostWindow &)>;

} // namespace

Q_DECLARE_METATYPE(Change)

// What a person at the keyboard and the mouse can and cannot do while a sheet is up.
class ModalSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void keysAnswerTheQuestion();
    void escapeNeedsASecondButton();
    void tabStaysInside();
    void focusCannotBeTakenAndReturns();
    void nothingBelowReacts();
    void sheetOverSheet();
    void answeredSheetsTakeNoKeys_data();
    void answeredSheetsTakeNoKeys();
    void dialogKeepsItsDefaultButton();
    void popupsCloseFirst();
    void buttonsShowNoStockIcons();
    void boxesWithoutParent();

private:
    // Runs @p steps as soon as the sheet is up and returns the answer to the question.
    int ask(const std::function<void(KovaMessageSheet &)> &steps);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        press(m_window.get(), key, modifiers);
    }

    std::unique_ptr<HostWindow> m_window;
};

void ModalSheetTest::init()
{
    m_window = std::make_unique<HostWindow>();
    showActive(m_window.get());
    m_window->edit->setFocus();
}

int ModalSheetTest::ask(const std::function<void(KovaMessageSheet &)> &steps)
{
    QTimer::singleShot(0, m_window.get(), [&] {
        KovaMessageSheet *sheet = visibleSheet(m_window.get());
        if (!sheet)
            qFatal("no sheet is up");
        steps(*sheet);
        if (visibleSheet(m_window.get()) == sheet)
            sheet->done(-1);
    });
    return showConfirmMsg(QString(), "Erase <a href='x:y'>the disk</a>?",
                          m_window->centralWidget());
}

void ModalSheetTest::keysAnswerTheQuestion()
{
    struct Case
    {
        Qt::Key key;
        bool onSecondButton;
        int answer;
    };
    const QVector<Case> cases = {
        {Qt::Key_Return, false, 1024},   {Qt::Key_Enter, false, 1024},
        {Qt::Key_Space, false, 1024},    {Qt::Key_Escape, false, 8388608},
        {Qt::Key_Return, true, 8388608}, {Qt::Key_Enter, true, 8388608},
        {Qt::Key_Space, true, 8388608},  {Qt::Key_Y, false, -1},
        {Qt::Key_F5, false, -1},
    };
    for (const Case &pressed : cases) {
        const int answer = ask([&](KovaMessageSheet &sheet) {
            if (pressed.onSecondButton)
                sheet.button(QMessageBox::Discard)->setFocus();
            key(pressed.key);
        });
        QVERIFY2(answer == pressed.answer, qPrintable(QKeySequence(pressed.key).toString()));
    }
    QCOMPARE(m_window->shortcuts, 0);
    QCOMPARE(m_window->edit->text(), "");

    // The masks of sheets that are gone stay behind, out of sight.
    const auto masks = m_window->findChildren<KovaMask *>();
    QCOMPARE(masks.size(), cases.size());
    for (const KovaMask *mask : masks)
        QVERIFY(!mask->isVisible());
}

void ModalSheetTest::escapeNeedsASecondButton()
{
    bool survivedEscape = false;
    QTimer::singleShot(0, this, [&] {
        key(Qt::Key_Escape);
        survivedEscape = visibleSheet(m_window.get());
        key(Qt::Key_Return);
    });
    showInfoMsg(QString(), "Done.", m_window.get());
    QVERIFY(survivedEscape);
}

void ModalSheetTest::tabStaysInside()
{
    ask([&](KovaMessageSheet &sheet) {
        auto *clickedOnly = new QWidget(&sheet);
        clickedOnly->setFocusPolicy(Qt::ClickFocus);
        clickedOnly->show();
        for (QWidget *start : accessibleList(&sheet, AccessibleFilter())) {
            for (const auto direction : {Qt::Key_Tab, Qt::Key_Backtab}) {
                start->setFocus(Qt::OtherFocusReason);
                QSet<QWidget *> visited;
                for (int step = 0; step < 8; ++step) {
                    key(direction, direction == Qt::Key_Tab ? Qt::NoModifier : Qt::ShiftModifier);
                    visited.insert(QApplication::focusWidget());
                    QVERIFY(sheet.isAncestorOf(QApplication::focusWidget()));
                }
                QVERIFY(!visited.contains(clickedOnly));
                QVERIFY(visited.contains(sheet.button(QMessageBox::Ok)));
                QVERIFY(visited.contains(sheet.button(QMessageBox::Discard)));
                QVERIFY2(visited.size() >= 3, "the link in the text is left out");
                // Without a widget that has the focus the window gets the key.
                QApplication::focusWidget()->clearFocus();
                key(direction);
                QVERIFY(sheet.isAncestorOf(QApplication::focusWidget()));
            }
        }
        sheet.button(QMessageBox::Ok)->setFocus();
        key(Qt::Key_Tab);
        key(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), sheet.button(QMessageBox::Ok));
    });
    QCOMPARE(m_window->shortcuts, 0);
}

void ModalSheetTest::focusCannotBeTakenAndReturns()
{
    ask([&](KovaMessageSheet &sheet) {
        sheet.button(QMessageBox::Discard)->setFocus();
        m_window->edit->setFocus();
        QCOMPARE(QApplication::focusWidget(), sheet.button(QMessageBox::Discard));
        key(Qt::Key_X);
        QTest::keyClick(m_window->edit, Qt::Key_X);
        QCOMPARE(m_window->edit->text(), "");
    });
    QCOMPARE(QApplication::focusWidget(), m_window->edit);
    key(Qt::Key_X);
    QCOMPARE(m_window->edit->text(), "x");

    // A widget that is gone by then is nobody to return to.
    auto *temporary = new QLineEdit(m_window->centralWidget());
    temporary->show();
    temporary->setFocus();
    ask([&](KovaMessageSheet &) { delete temporary; });
    QVERIFY(!visibleSheet(m_window.get()));
}

void ModalSheetTest::nothingBelowReacts()
{
    QWidget *const button = m_window->button;
    // What is dragged over the window when the sheet comes up can still be dropped.
    QMimeData dragged;
    dragged.setText("dragged");
    m_window->edit->setAttribute(Qt::WA_AcceptTouchEvents);
    QCoreApplication::sendEvent(m_window->edit, usesOfAWidget(&dragged).back().get());
    UseCounter counter;
    m_window->edit->installEventFilter(&counter);
    ask([&](KovaMessageSheet &sheet) {
        const QPoint beside = sheet.mapTo(m_window.get(), sheet.rect().center() - QPoint(0, 5));
        for (const QPoint &point :
             {button->mapTo(m_window.get(), button->rect().center()),
              m_window->edit->mapTo(m_window.get(), QPoint(5, 5)), QPoint(780, 480), beside}) {
            click(m_window.get(), point);
            QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, {}, point);
            QVERIFY(sheet.isAncestorOf(QApplication::focusWidget()));
        }
        QTest::mouseClick(button, Qt::LeftButton);
        for (const auto &use : usesOfAWidget(&dragged)) {
            QCoreApplication::sendEvent(m_window->edit, use.get());
            QVERIFY2(counter.uses == 0, qPrintable(QString::number(use->type())));
        }
        key(Qt::Key_S, Qt::ControlModifier);
        key(Qt::Key_S, Qt::AltModifier);
        key(Qt::Key_F, Qt::AltModifier);
        QVERIFY(!QApplication::activePopupWidget());
    });
    QCOMPARE(m_window->clicks, 0);
    QCOMPARE(m_window->shortcuts, 0);
    QCOMPARE(m_window->presses, 0);

    // The mnemonic of the window's button is the sheet's own here.
    QTimer::singleShot(0, m_window.get(), [&] { key(Qt::Key_S, Qt::AltModifier); });
    QCOMPARE(showConfirmMsgCustomBtn(QString(), "Erase?", {"&Erase", "&Spare it"}, m_window.get()),
             8388608);
    QCOMPARE(m_window->clicks, 0);

    // And everything reacts again afterwards.
    click(button);
    QCOMPARE(m_window->clicks, 1);
    key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_window->shortcuts, 1);
}

void ModalSheetTest::sheetOverSheet()
{
    const int first = ask([&](KovaMessageSheet &sheet) {
        sheet.button(QMessageBox::Discard)->setFocus();
        QTimer::singleShot(0, m_window.get(), [&] {
            key(Qt::Key_Tab);
            key(Qt::Key_Escape);
        });
        QCOMPARE(showConfirmMsg(QString(), "Really?", m_window.get()), 8388608);
        QCOMPARE(QApplication::focusWidget(), sheet.button(QMessageBox::Discard));
        QVERIFY(sheet.isVisible());
        key(Qt::Key_Return);
    });
    QCOMPARE(first, 8388608);
    QCOMPARE(QApplication::focusWidget(), m_window->edit);
}

void ModalSheetTest::answeredSheetsTakeNoKeys_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isInherited"); // by the button that is next
    QTest::newRow("deleted") << Change([](HostWindow &window) { delete window.edit; }) << false;
    QTest::newRow("hidden") << Change([](HostWindow &window) { window.edit->hide(); }) << true;
    QTest::newRow("disabled") << Change([](HostWindow &w) { w.edit->setEnabled(false); }) << true;
    QTest::newRow("disabled with its window")
        << Change([](HostWindow &window) { window.setEnabled(false); }) << false;
}

void ModalSheetTest::answeredSheetsTakeNoKeys()
{
    QFETCH(Change, change);
    QFETCH(bool, isInherited);
    KovaInputSheet input("Name", m_window.get());
    KovaMessageSheet message(KovaMessageSheet::Question, "Go?", m_window.get());
    message.showSheet();
    change(*m_window);
    for (KovaSheet *sheet :
         {static_cast<KovaSheet *>(&message), static_cast<KovaSheet *>(&input)}) {
        QSignalSpy finished(sheet, &KovaSheet::finished);
        if (sheet == &input)
            input.showSheet();
        click(sheet->findChild<QPushButton *>());
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(m_window->focusWidget(), isInherited ? m_window->button : nullptr);
        for (const auto pressed : {Qt::Key_A, Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape})
            key(pressed);
        QCOMPARE(finished.count(), 1);
    }
    QCOMPARE(input.getContent(), "");

    // Assistive technology clicks only some time after it was told to.
    QSignalSpy finished(&message, &KovaSheet::finished);
    message.showSheet();
    auto *ok = qobject_cast<QPushButton *>(message.button(QMessageBox::Ok));
    ok->animateClick(1);
    key(Qt::Key_Return);
    QTRY_VERIFY(!ok->isDown());
    QCOMPARE(finished.count(), 1);
}

void ModalSheetTest::dialogKeepsItsDefaultButton()
{
    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    auto *edit = new QLineEdit;
    auto *other = new QPushButton("Other");
    auto *apply = new QPushButton("Apply");
    for (QWidget *widget : {static_cast<QWidget *>(edit), static_cast<QWidget *>(other),
                            static_cast<QWidget *>(apply)})
        layout->addWidget(widget);
    dialog.resize(700, 300);
    apply->setDefault(true);
    QSignalSpy applied(apply, &QPushButton::clicked);
    showActive(&dialog);

    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", &dialog);
    auto *ok = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok));
    for (QWidget *focused : {static_cast<QWidget *>(edit), static_cast<QWidget *>(other)}) {
        focused->setFocus();
        sheet.showSheet();
        QVERIFY(ok->isDefault());
        press(&dialog, Qt::Key_Tab);
        press(&dialog, Qt::Key_Tab);
        QVERIFY(ok->isDefault());
        press(&dialog, Qt::Key_Escape);
        QVERIFY(!sheet.isVisible());
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.focusWidget(), focused);
        edit->setFocus();
        applied.clear();
        press(&dialog, Qt::Key_Return);
        QCOMPARE(applied.count(), 1);
    }
}

void ModalSheetTest::popupsCloseFirst()
{
    QComboBox box(m_window->centralWidget());
    box.addItems({"one", "two"});
    box.show();
    QMenu menu;
    QMenu *submenu = menu.addMenu("More");
    QSignalSpy triggered(submenu->addAction("Act"), &QAction::triggered);
    const auto showMenus = [&] {
        menu.popup(m_window->pos());
        menu.setActiveAction(submenu->menuAction());
        QTRY_VERIFY(submenu->isVisible());
    };
    const QVector<std::function<void()>> popups = {[&] { box.showPopup(); }, showMenus};
    for (const auto &showPopup : popups) {
        showPopup();
        QTRY_VERIFY(QApplication::activePopupWidget());
        ask([&](KovaMessageSheet &sheet) {
            QVERIFY(!QApplication::activePopupWidget());
            key(Qt::Key_Down);
            QVERIFY(sheet.isAncestorOf(QApplication::focusWidget()));
        });
    }
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(triggered.count(), 0);

    // Those who are told of the end of a popup may end or delete what came up.
    for (const bool deleted : {false, true}) {
        auto *sheet = new KovaMessageSheet(KovaMessageSheet::Question, "Go?", m_window.get());
        QSignalSpy finished(sheet, &KovaSheet::finished);
        connect(&menu, &QMenu::aboutToHide, sheet, [sheet, deleted] {
            if (deleted)
                delete sheet;
            else
                sheet->quit();
        });
        showMenus();
        QCOMPARE(sheet->exec(), 0);
        QCOMPARE(finished.count(), deleted ? 0 : 1);
    }
    QVERIFY(m_window->close());
}

void ModalSheetTest::buttonsShowNoStockIcons()
{
    // This desktop has icons on its dialog buttons, or else there is nothing to see here.
    const QDialogButtonBox plain(QDialogButtonBox::Ok);
    QVERIFY(!plain.button(QDialogButtonBox::Ok)->icon().isNull());
    ask([](KovaMessageSheet &sheet) {
        QVERIFY(sheet.button(QMessageBox::Ok)->icon().isNull());
        QVERIFY(sheet.button(QMessageBox::Discard)->icon().isNull());
    });
}

void ModalSheetTest::boxesWithoutParent()
{
    const auto answerBox = [](Qt::Key key) {
        QTimer::singleShot(0, qApp, [key] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                qFatal("no message box is up");
            QCOMPARE(box->windowTitle(), "Title");
            QVERIFY(!box->styleSheet().isEmpty());
            for (const QAbstractButton *button : box->buttons())
                QVERIFY(button->icon().isNull());
            showActive(box);
            press(box, key);
        });
    };
    answerBox(Qt::Key_Return);
    QCOMPARE(showConfirmMsg("Title", "Text", nullptr), 1024);
    answerBox(Qt::Key_Escape);
    QCOMPARE(showConfirmMsgCustomBtn("Title", "Text", {"Go", QString()}, nullptr), 4194304);
    answerBox(Qt::Key_Return);
    showInfoMsg("Title", "Text", nullptr);
    answerBox(Qt::Key_Return);
    showWarningMsg("Title", "Text", nullptr);
    answerBox(Qt::Key_Return);
    showWarningMsg("Title", "Text", "Details", nullptr);
    answerBox(Qt::Key_Return);
    showUpgradingMsg("Title", "Text", nullptr);
}

QTEST_MAIN(ModalSheetTest)
#include "modal-sheet-test.moc"
