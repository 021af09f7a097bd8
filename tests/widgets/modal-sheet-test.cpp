#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"
#include "support/x11-window.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// A window as applications have them: fields, a button, a menu, shortcuts of its own.
class HostWindow : public QMainWindow
{
public:
    HostWindow()
    {
        auto *content = new QWidget;
        auto *layout = new QVBoxLayout(content);
        layout->addWidget(edit);
        layout->addWidget(button);
        layout->addStretch();
        setCentralWidget(content);
        const auto count = [this] { ++shortcuts; };
        menuBar()->addMenu("&File")->addAction("Save", this, count, QKeySequence("Ctrl+S"));
        for (const char *keys : {"Return", "Escape", "Tab", "F5", "Space"})
            connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, count);
        connect(button, &QPushButton::clicked, this, [this] { ++clicks; });
        resize(800, 500);
    }

    QLineEdit *edit = new QLineEdit;
    QPushButton *button = new QPushButton("&Start");
    int shortcuts = 0;
    int clicks = 0;
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

} // namespace

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
    void closeButtonIsTakenAndGivenBack();
    void windowCannotBeClosed();
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
        for (QWidget *start : accessibleList(&sheet, AccessibleFilter())) {
            for (const auto direction : {Qt::Key_Tab, Qt::Key_Backtab}) {
                start->setFocus(Qt::OtherFocusReason);
                QSet<QWidget *> visited;
                for (int step = 0; step < 8; ++step) {
                    key(direction, direction == Qt::Key_Tab ? Qt::NoModifier : Qt::ShiftModifier);
                    visited.insert(QApplication::focusWidget());
                    QVERIFY(sheet.isAncestorOf(QApplication::focusWidget()));
                }
                QVERIFY(visited.contains(sheet.button(QMessageBox::Ok)));
                QVERIFY(visited.contains(sheet.button(QMessageBox::Discard)));
                QVERIFY2(visited.size() >= 3, "the link in the text is left out");
            }
        }
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

void ModalSheetTest::closeButtonIsTakenAndGivenBack()
{
    const WId id = m_window->winId();
    const QVector<quint32> before{2, 0, 1, 0, 0};
    writeMotifHints(id, before);
    ask([&](KovaMessageSheet &) {
        QTRY_COMPARE(readMotifHints(id).mid(0, 3), (QVector<quint32>{1, 0, 6}));
    });
    QTRY_COMPARE(readMotifHints(id), before);

    KovaMessageSheet sheet(KovaMessageSheet::Question, "Again?", m_window.get());
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

void ModalSheetTest::windowCannotBeClosed()
{
    ask([&](KovaMessageSheet &) {
        m_window->close();
        QVERIFY(m_window->isVisible());
        requestClose(m_window->winId());
        QTest::qWait(100);
        QVERIFY(m_window->isVisible());
    });
    requestClose(m_window->winId());
    QTRY_VERIFY(!m_window->isVisible());
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
