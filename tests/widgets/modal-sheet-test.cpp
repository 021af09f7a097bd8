// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/answers.h"
#include "support/host-window.h"

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

// Remembers what reached a widget.
class Recorder : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        seen.insert(event->type());
        return false;
    }
    QSet<int> seen;
};

} // namespace

// What a person at the keyboard and the mouse can and cannot do while a sheet is up.
class ModalSheetTest : public HostWindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void keysAnswerTheQuestion();
    void keysEndASheetWithAField();
    void tabStaysInside();
    void nothingBelowReacts();
    void answeredSheetsTakeNoKeys_data();
    void answeredSheetsTakeNoKeys();
    void doneInsideAndOutsideARun();
    void dialogKeepsItsDefaultButton();
    void popupsCloseFirst();
    void boxesWhereNoSheetCanBe();

private:
    // Runs @p steps as soon as the sheet is up and returns the answer to the question.
    int ask(const std::function<void(KovaMessageSheet &)> &steps,
            const MsgBoxCustomBtnText &buttons = {});
};

int ModalSheetTest::ask(const std::function<void(KovaMessageSheet &)> &steps,
                        const MsgBoxCustomBtnText &buttons)
{
    QTimer::singleShot(0, m_window.get(), [&] {
        KovaMessageSheet *sheet = visibleSheet(m_window.get());
        if (!sheet)
            qFatal("no sheet is up");
        steps(*sheet);
        if (visibleSheet(m_window.get()) == sheet)
            sheet->done(-1);
    });
    return showConfirmMsgCustomBtn("", "Erase <a href='x:y'>the disk</a>?", buttons,
                                   m_window->centralWidget());
}

void ModalSheetTest::keysAnswerTheQuestion()
{
    const std::tuple<Qt::Key, bool, int> cases[] = {
        {Qt::Key_Return, false, accepted}, {Qt::Key_Enter, false, accepted},
        {Qt::Key_Space, false, accepted},  {Qt::Key_Escape, false, refused},
        {Qt::Key_Return, true, refused},   {Qt::Key_Y, false, -1},
        {Qt::Key_F5, false, -1},
    };
    for (const auto &[pressed, onSecondButton, expected] : cases) {
        const int answer = ask([&, pressed = pressed, second = onSecondButton](auto &sheet) {
            if (second)
                sheet.button(QMessageBox::Discard)->setFocus();
            key(pressed);
        });
        QVERIFY2(answer == expected, qPrintable(QKeySequence(pressed).toString()));
    }
    QCOMPARE(m_window->shortcuts, 0);

    // Escape needs a second button.
    KovaMessageSheet sheet(KovaMessageSheet::Information, "Done.", m_window.get());
    sheet.showSheet();
    key(Qt::Key_Escape);
    QVERIFY(sheet.isVisible());
    key(Qt::Key_Return);
    QVERIFY(!sheet.isVisible());
}

void ModalSheetTest::keysEndASheetWithAField()
{
    const std::tuple<int, Qt::Key, int> cases[] = {{0, Qt::Key_Return, accepted},
                                                   {0, Qt::Key_Escape, refused},
                                                   {1, Qt::Key_Space, accepted},
                                                   {2, Qt::Key_Return, refused}};
    for (const auto &[tabs, last, expected] : cases) {
        KovaInputSheet sheet("Name", m_window.get());
        sheet.getLineEdit()->setText("old.txt");
        sheet.getLineEdit()->setSelection(0, 3);
        const int result = run(sheet, [&, keys = QVector<Qt::Key>(tabs, Qt::Key_Tab) << last] {
            // A selected text stays selected, and is replaced.
            for (const auto pressed : QVector{Qt::Key_H, Qt::Key_Space, Qt::Key_I} + keys)
                key(pressed);
            sheet.quit();
        });
        QVERIFY2(result == expected, qPrintable(QString("%1 %2").arg(tabs).arg(last)));
        QCOMPARE(sheet.getContent(), "h i.txt");
        QCOMPARE(m_window->focusWidget(), m_window->edit);
    }
}

void ModalSheetTest::tabStaysInside()
{
    ask([&](KovaMessageSheet &sheet) {
        QWidget clickedOnly(&sheet);
        clickedOnly.setFocusPolicy(Qt::ClickFocus);
        clickedOnly.show();
        QWidget *const text = sheet.findChild<MessageLabel *>();
        QWidget *const ok = sheet.button(QMessageBox::Ok);
        QWidget *const second = sheet.button(QMessageBox::Discard);
        // The link in the text is a stop of its own.
        const QVector<QWidget *> forwards{second, text, text, ok, second};
        const QVector<QWidget *> backwards{text, text, second, ok, text};
        for (const auto direction : {Qt::Key_Tab, Qt::Key_Backtab}) {
            const bool forward = direction == Qt::Key_Tab;
            ok->setFocus();
            for (QWidget *stop : forward ? forwards : backwards) {
                key(direction, forward ? Qt::NoModifier : Qt::ShiftModifier);
                QCOMPARE(QApplication::focusWidget(), stop);
            }
            // Without a widget that has the focus the window gets the key.
            QApplication::focusWidget()->clearFocus();
            QTest::keyPress(m_window->windowHandle(), direction);
            QCOMPARE(QApplication::focusWidget(), forward ? text : second);
            QTest::keyRelease(m_window->windowHandle(), direction);
        }
    });
    QCOMPARE(m_window->shortcuts, 0);
}

void ModalSheetTest::nothingBelowReacts()
{
    QLineEdit *const edit = m_window->edit;
    // What is dragged over the window when the sheet comes up can still be dropped.
    QMimeData dragged;
    dragged.setText("dragged");
    edit->setAttribute(Qt::WA_AcceptTouchEvents);
    QCoreApplication::sendEvent(edit, usesOfAWidget(&dragged).back().get());
    Recorder below;
    edit->installEventFilter(&below);
    ask([&](KovaMessageSheet &sheet) {
        const QPoint beside(780, 480);
        QCOMPARE(m_window->childAt(beside), qobject_cast<KovaMask *>(sheet.parent()));
        click(m_window.get(), beside);
        click(m_window->button);
        click(&sheet, sheet.rect().center() - QPoint(0, 5));
        sheet.button(QMessageBox::Discard)->setFocus();
        edit->setFocus();
        QCOMPARE(QApplication::focusWidget(), sheet.button(QMessageBox::Discard));
        for (const auto &use : usesOfAWidget(&dragged)) {
            QCoreApplication::sendEvent(edit, use.get());
            QVERIFY2(!below.seen.contains(use->type()), qPrintable(QString::number(use->type())));
        }
        key(Qt::Key_S, Qt::ControlModifier);
        key(Qt::Key_S, Qt::AltModifier);
        key(Qt::Key_F, Qt::AltModifier);
        QVERIFY(!QApplication::activePopupWidget());
    });
    // The mnemonic of the window's button is the sheet's own here.
    const auto spare = [&](KovaMessageSheet &) { key(Qt::Key_S, Qt::AltModifier); };
    QCOMPARE(ask(spare, {"&Erase", "&Spare it"}), refused);
    QCOMPARE(m_window->clicks + m_window->shortcuts + m_window->presses, 0);

    // And everything reacts again afterwards.
    key(Qt::Key_X);
    QCOMPARE(edit->text(), "x");
    click(m_window->button);
    QCOMPARE(m_window->clicks, 1);
    key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_window->shortcuts, 1);
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
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", m_window.get());
    auto *ok = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok));
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.showSheet();
    change(*m_window);
    click(ok);
    QCOMPARE(m_window->focusWidget(), isInherited ? m_window->button : nullptr);
    for (const auto pressed : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape})
        key(pressed);
    QCOMPARE(finished.count(), 1);

    // Assistive technology clicks only some time after it was told to.
    sheet.showSheet();
    ok->animateClick(1);
    key(Qt::Key_Return);
    QTRY_VERIFY(!ok->isDown());
    QCOMPARE(finished.count(), 2);
}

void ModalSheetTest::doneInsideAndOutsideARun()
{
    QWidget other; // keeps the application running
    other.show();
    const auto live = [this](auto &&sheet) {
        QVariantList seen;
        connect(&sheet, &KovaSheet::finished, [&](int code) { seen.append(code); });
        sheet.done(5);
        showActive(m_window.get());
        sheet.showSheet();
        seen.append(sheet.isAncestorOf(m_window->focusWidget()));
        sheet.buttonClick(sheet.button(QMessageBox::Discard));
        sheet.quit();
        sheet.setDefaultButton(nullptr);
        for (const bool blocked : {true, false}) {
            sheet.setBlockWindowButton(blocked);
            // A result of the time before must not end the next run.
            const int result = run(sheet, [&] {
                seen.append(m_window->close());
                if (blocked)
                    sheet.done(9);
            });
            seen.append(result);
        }
        seen.append(sheet.isVisible());
        return seen;
    };
    const QVariantList expected{5, true, refused, 0, false, 9, 9, true, 0, 0, false};
    QCOMPARE(live(KovaInputSheet(m_window.get())), expected);
    QCOMPARE(live(KovaMessageSheet(KovaMessageSheet::Question, m_window.get())), expected);
}

void ModalSheetTest::dialogKeepsItsDefaultButton()
{
    QDialog dialog;
    dialog.resize(700, 300);
    QLineEdit edit(&dialog);
    QPushButton other("Other", &dialog);
    QPushButton apply("Apply", &dialog);
    apply.setDefault(true);
    QSignalSpy applied(&apply, &QPushButton::clicked);
    showActive(&dialog);
    other.setFocus();

    KovaMessageSheet sheet(KovaMessageSheet::Question, "Go?", &dialog);
    const auto *ok = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok));
    sheet.showSheet();
    QVERIFY(ok->isDefault());
    press(&dialog, Qt::Key_Tab);
    press(&dialog, Qt::Key_Tab);
    QVERIFY(ok->isDefault());
    press(&dialog, Qt::Key_Escape);
    QVERIFY(!sheet.isVisible());
    QCOMPARE(dialog.focusWidget(), &other);
    edit.setFocus();
    press(&dialog, Qt::Key_Return);
    QCOMPARE(applied.count(), 1);
}

void ModalSheetTest::popupsCloseFirst()
{
    QMenu menu;
    QMenu *submenu = menu.addMenu("More");
    submenu->addAction("Act");
    const auto showMenus = [&] {
        menu.popup(m_window->pos());
        menu.setActiveAction(submenu->menuAction());
        QTRY_VERIFY(submenu->isVisible());
    };
    showMenus();
    ask([&](KovaMessageSheet &) { QVERIFY(!QApplication::activePopupWidget()); });

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

void ModalSheetTest::boxesWhereNoSheetCanBe()
{
    // This desktop has icons on its dialog buttons, which those of the house never show.
    const QDialogButtonBox plain(QDialogButtonBox::Ok);
    QVERIFY(!plain.button(QDialogButtonBox::Ok)->icon().isNull());
    QWidget hidden;
    const auto confirm = [](QWidget *owner) { return showConfirmMsg("Title", "Text", owner); };
    // The kind of box, the key that answers it, the answer and what shows it.
    const std::tuple<QString, Qt::Key, int, std::function<int()>> cases[] = {
        {"info", Qt::Key_Return, 0, [] { return showInfoMsg("Title", "Text", nullptr), 0; }},
        {"warning", Qt::Key_Return, 0, [] { return showWarningMsg("Title", "Text", nullptr), 0; }},
        {"upgrading", Qt::Key_Return, 0,
         [] { return showUpgradingMsg("Title", "Text", nullptr), 0; }},
        {"confirm", Qt::Key_Return, accepted, [=] { return confirm(nullptr); }},
        // Nor in a window that is not shown.
        {"confirm", Qt::Key_Escape, QMessageBox::Cancel,
         [&] { return confirm(new QLabel(&hidden)); }},
    };
    for (const auto &[kind, key, answer, show] : cases) {
        QTimer::singleShot(0, qApp, [kind = kind, key = key] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                qFatal("no message box is up");
            showActive(box);
            press(box, key);
            for (const QAbstractButton *button : box->buttons())
                QVERIFY2(button->icon().isNull(), qPrintable(kind));
            QCOMPARE(box->windowTitle(), "Title");
            QCOMPARE(box->styleSheet(), getStyleSheet("component." + kind + "_message_box", false));
        });
        QCOMPARE(show(), answer);
    }
}

QTEST_MAIN(ModalSheetTest)
#include "modal-sheet-test.moc"
