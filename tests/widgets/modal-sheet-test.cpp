#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"
#include "support/x11-window.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// A window as applications have them: fields, a button, a menu with shortcuts, a status of its own.
class HostWindow : public QMainWindow
{
public:
    HostWindow()
        : edit(new QLineEdit)
        , button(new QPushButton(QStringLiteral("&Start")))
    {
        auto *content = new QWidget;
        auto *layout = new QVBoxLayout(content);
        layout->addWidget(edit);
        layout->addWidget(button);
        layout->addStretch();
        setCentralWidget(content);
        QAction *save =
            menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("Save"), [this] {
                ++shortcuts;
            });
        save->setShortcut(QKeySequence(QStringLiteral("Ctrl+S")));
        for (const char *keys : {"Return", "Escape", "Tab", "F5", "Space"}) {
            connect(new QShortcut(QKeySequence(QLatin1String(keys)), this), &QShortcut::activated,
                    this, [this] { ++shortcuts; });
        }
        connect(button, &QPushButton::clicked, this, [this] { ++clicks; });
        resize(800, 500);
    }

    QLineEdit *edit;
    QPushButton *button;
    int shortcuts = 0;
    int clicks = 0;
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        ++presses;
        QMainWindow::mousePressEvent(event);
    }
};

KovaMessageSheet *openSheet(const QWidget &window)
{
    for (auto *sheet : window.findChildren<KovaMessageSheet *>()) {
        if (sheet->isVisible())
            return sheet;
    }
    return nullptr;
}

} // namespace

// What a person at the keyboard and the mouse can and cannot do while a sheet is up.
class ModalSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup();

    void keysAnswerTheQuestion_data();
    void keysAnswerTheQuestion();
    void returnPressesTheFocusedButton();
    void escapeNeedsASecondButton();
    void tabStaysInside_data();
    void tabStaysInside();
    void focusReturns();
    void focusCannotBeTaken();
    void nothingBelowReacts();
    void mnemonicsOfTheSheetWork();
    void sheetOverSheet();
    void closeButtonIsTakenAndGivenBack();
    void windowCannotBeClosed();
    void closedWindowEndsTheSheet();
    void hiddenSheetEnds();
    void buttonsShowNoStockIcons();
    void boxesWithoutParent();
    void masksStayBehind();

private:
    // Runs @p steps as soon as the sheet is up and returns the answer to the question.
    int ask(const std::function<void(KovaMessageSheet &)> &steps);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_window->windowHandle(), key, modifiers);
    }

    std::unique_ptr<HostWindow> m_window;
};

void ModalSheetTest::init()
{
    m_window = std::make_unique<HostWindow>();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_window->edit->setFocus();
}

void ModalSheetTest::cleanup()
{
    m_window.reset();
}

int ModalSheetTest::ask(const std::function<void(KovaMessageSheet &)> &steps)
{
    QTimer::singleShot(0, m_window.get(), [&] {
        KovaMessageSheet *sheet = openSheet(*m_window);
        if (!sheet)
            qFatal("no sheet is up");
        steps(*sheet);
        if (openSheet(*m_window) == sheet)
            sheet->done(-1);
    });
    return showConfirmMsg(QString(), QStringLiteral("Erase <a href='x:y'>the disk</a>?"),
                          m_window->centralWidget());
}

void ModalSheetTest::keysAnswerTheQuestion_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("answer");
    QTest::newRow("Return") << Qt::Key_Return << 1024;
    QTest::newRow("Enter") << Qt::Key_Enter << 1024;
    QTest::newRow("Space") << Qt::Key_Space << 1024;
    QTest::newRow("Escape") << Qt::Key_Escape << 8388608;
    QTest::newRow("letter") << Qt::Key_Y << -1;
    QTest::newRow("function key") << Qt::Key_F5 << -1;
}

void ModalSheetTest::keysAnswerTheQuestion()
{
    QFETCH(Qt::Key, key);
    QFETCH(int, answer);
    QCOMPARE(ask([&](KovaMessageSheet &) { this->key(key); }), answer);
    QCOMPARE(m_window->shortcuts, 0);
    QCOMPARE(m_window->edit->text(), QString());
}

void ModalSheetTest::returnPressesTheFocusedButton()
{
    for (const Qt::Key pressed : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        QCOMPARE(ask([&](KovaMessageSheet &sheet) {
                     sheet.button(QMessageBox::Discard)->setFocus();
                     key(pressed);
                 }),
                 8388608);
    }
}

void ModalSheetTest::escapeNeedsASecondButton()
{
    KovaMessageSheet sheet(KovaMessageSheet::Information, QStringLiteral("Done."), m_window.get());
    KovaMask::createMask(&sheet, m_window.get(), QColor(0, 0, 0, 20));
    bool survivedEscape = false;
    QTimer::singleShot(0, this, [&] {
        key(Qt::Key_Escape);
        survivedEscape = sheet.isVisible();
        key(Qt::Key_Return);
    });
    QCOMPARE(sheet.exec(), 1024);
    QVERIFY(survivedEscape);
}

void ModalSheetTest::tabStaysInside_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Tab") << Qt::Key_Tab << Qt::KeyboardModifiers();
    QTest::newRow("Shift+Tab") << Qt::Key_Backtab << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void ModalSheetTest::tabStaysInside()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    ask([&](KovaMessageSheet &sheet) {
        const QList<QWidget *> children = accessibleList(&sheet, AccessibleFilter());
        for (QWidget *start : children) {
            start->setFocus(Qt::OtherFocusReason);
            QSet<QWidget *> visited;
            for (int press = 0; press < 8; ++press) {
                this->key(key, modifiers);
                QWidget *focus = QApplication::focusWidget();
                QVERIFY(focus);
                QVERIFY2(sheet.isAncestorOf(focus), focus->metaObject()->className());
                visited.insert(focus);
            }
            QVERIFY(visited.contains(sheet.button(QMessageBox::Ok)));
            QVERIFY(visited.contains(sheet.button(QMessageBox::Discard)));
            QVERIFY(visited.size() >= 3);
        }
    });
    QCOMPARE(m_window->shortcuts, 0);
}

void ModalSheetTest::focusReturns()
{
    ask([&](KovaMessageSheet &sheet) {
        QVERIFY(sheet.isAncestorOf(QApplication::focusWidget()));
        key(Qt::Key_Tab);
    });
    QCOMPARE(QApplication::focusWidget(), m_window->edit);

    // A widget that is gone by then is nobody to return to.
    auto *temporary = new QLineEdit(m_window->centralWidget());
    temporary->show();
    temporary->setFocus();
    ask([&](KovaMessageSheet &) { delete temporary; });
    QVERIFY(!openSheet(*m_window));
}

void ModalSheetTest::focusCannotBeTaken()
{
    ask([&](KovaMessageSheet &sheet) {
        sheet.button(QMessageBox::Discard)->setFocus();
        m_window->edit->setFocus();
        QCOMPARE(QApplication::focusWidget(), sheet.button(QMessageBox::Discard));
        key(Qt::Key_X);
        QCOMPARE(m_window->edit->text(), QString());
        QTest::keyClick(m_window->edit, Qt::Key_X);
        QCOMPARE(m_window->edit->text(), QString());
    });
    key(Qt::Key_X);
    QCOMPARE(m_window->edit->text(), QStringLiteral("x"));
}

void ModalSheetTest::nothingBelowReacts()
{
    const auto centre = [&](QWidget *widget) {
        return widget->mapTo(m_window.get(), widget->rect().center());
    };
    ask([&](KovaMessageSheet &sheet) {
        QWindow *handle = m_window->windowHandle();
        for (const QPoint &point : {centre(m_window->button), centre(m_window->edit),
                                    QPoint(780, 480), centre(&sheet) + QPoint(0, -5)}) {
            QTest::mouseClick(handle, Qt::LeftButton, {}, point);
            QTest::mouseDClick(handle, Qt::LeftButton, {}, point);
            QVERIFY(sheet.isAncestorOf(QApplication::focusWidget()));
        }
        QTest::mouseClick(m_window->button, Qt::LeftButton);
        key(Qt::Key_S, Qt::ControlModifier);
        key(Qt::Key_S, Qt::AltModifier);
        key(Qt::Key_F, Qt::AltModifier);
        QVERIFY(!QApplication::activePopupWidget());
    });
    QCOMPARE(m_window->clicks, 0);
    QCOMPARE(m_window->shortcuts, 0);
    QCOMPARE(m_window->presses, 0);

    // And everything does again afterwards.
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, centre(m_window->button));
    QCOMPARE(m_window->clicks, 1);
    key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_window->shortcuts, 1);
}

void ModalSheetTest::mnemonicsOfTheSheetWork()
{
    QTimer::singleShot(0, m_window.get(), [&] { key(Qt::Key_S, Qt::AltModifier); });
    const MsgBoxCustomBtnText texts{QStringLiteral("&Erase"), QStringLiteral("&Spare it")};
    QCOMPARE(showConfirmMsgCustomBtn(QString(), QStringLiteral("Erase?"), texts, m_window.get()),
             8388608);
    QCOMPARE(m_window->clicks, 0);
}

void ModalSheetTest::sheetOverSheet()
{
    QWidget *insideFirst = nullptr;
    QWidget *afterSecond = nullptr;
    int second = 0;
    const int first = ask([&](KovaMessageSheet &sheet) {
        insideFirst = sheet.button(QMessageBox::Discard);
        insideFirst->setFocus();
        QTimer::singleShot(0, m_window.get(), [&] {
            key(Qt::Key_Tab);
            key(Qt::Key_Escape);
        });
        second = showConfirmMsg(QString(), QStringLiteral("Really?"), m_window.get());
        afterSecond = QApplication::focusWidget();
        QVERIFY(sheet.isVisible());
        key(Qt::Key_Return);
    });
    QCOMPARE(second, 8388608);
    QCOMPARE(afterSecond, insideFirst);
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

    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Again?"), m_window.get());
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

void ModalSheetTest::closedWindowEndsTheSheet()
{
    // Another window keeps the application alive.
    QWidget other;
    other.show();
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Go?"), m_window.get());
    KovaMask::createMask(&sheet, m_window.get(), QColor(0, 0, 0, 20));
    sheet.setBlockWindowButton(false);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    QTimer::singleShot(0, m_window.get(), &QWidget::close);
    QCOMPARE(sheet.exec(), 0);
    QCOMPARE(finished.count(), 1);
}

void ModalSheetTest::hiddenSheetEnds()
{
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Go?"), m_window.get());
    KovaMask::createMask(&sheet, m_window.get(), QColor(0, 0, 0, 20));
    QTimer::singleShot(0, &sheet, &QWidget::hide);
    QCOMPARE(sheet.exec(), 0);
    QCOMPARE(QApplication::focusWidget(), m_window->edit);
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
            QCOMPARE(box->windowTitle(), QStringLiteral("Title"));
            QVERIFY(!box->styleSheet().isEmpty());
            for (const QAbstractButton *button : box->buttons())
                QVERIFY(button->icon().isNull());
            QVERIFY(QTest::qWaitForWindowExposed(box));
            QTest::keyClick(box->windowHandle(), key);
        });
    };
    const QString title = QStringLiteral("Title");
    const QString text = QStringLiteral("Text");
    WarningCatcher warnings;
    answerBox(Qt::Key_Return);
    QCOMPARE(showConfirmMsg(title, text, nullptr), 1024);
    answerBox(Qt::Key_Escape);
    QCOMPARE(showConfirmMsgCustomBtn(title, text, {QStringLiteral("Go"), QString()}, nullptr),
             4194304);
    answerBox(Qt::Key_Return);
    showInfoMsg(title, text, nullptr);
    answerBox(Qt::Key_Return);
    showWarningMsg(title, text, nullptr);
    answerBox(Qt::Key_Return);
    showWarningMsg(title, text, text, nullptr);
    answerBox(Qt::Key_Return);
    showUpgradingMsg(title, text, nullptr);
    QCOMPARE(warnings.take(), QStringList());
}

void ModalSheetTest::masksStayBehind()
{
    for (int i = 1; i <= 3; ++i) {
        ask([](KovaMessageSheet &) {});
        const auto masks = m_window->findChildren<KovaMask *>();
        QCOMPARE(masks.size(), i);
        QVERIFY(!masks.last()->isVisible());
    }
}

QTEST_MAIN(ModalSheetTest)
#include "modal-sheet-test.moc"
