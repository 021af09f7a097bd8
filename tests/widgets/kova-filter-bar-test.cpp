#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// Runs @p act once a menu is open; the one that opens it is back only when it is closed.
void whenMenuOpens(const std::function<void(QMenu *)> &act)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || !menu->windowHandle()->isExposed())
            return;
        delete timer;
        act(menu);
    });
    timer->start(1);
}

} // namespace

class KovaFilterBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void keepsThePlaceOfItsButtonFree();
    void searchesOnReturnOnly();
    void downWithoutMenuDoesNothing();
    void menuIsUsedByKeyboard();
    void menuOpensAtAPress();
    void barMayEndInItsMenu();
    void lateClickChoosesNothing();

private:
    std::unique_ptr<QWidget> m_window;
    QPointer<KovaFilterBar> m_bar;
};

void KovaFilterBarTest::init()
{
    m_window = std::make_unique<QWidget>();
    m_bar = new KovaFilterBar(m_window.get());
    m_bar->resize(kovaPx(240), m_bar->height());
    m_window->resize(kovaPx(300), kovaPx(200));
    showActive(m_window.get());
    m_bar->setFocus();
}

void KovaFilterBarTest::keepsThePlaceOfItsButtonFree()
{
    const auto *button = m_bar->findChild<KovaIconButton *>();
    QCOMPARE(m_bar->height(), kovaPx(28));
    QCOMPARE(button->geometry(), QRect(kovaPx(4), kovaPx(2), kovaPx(34), kovaPx(24)));
    QCOMPARE(button->cursor().shape(), Qt::ArrowCursor);
    press(m_bar, Qt::Key_Tab);
    QVERIFY2(m_bar->hasFocus(), "the button is no stop of its own");
    press(m_bar, Qt::Key_M);
    m_bar->setCursorPosition(0);
    QVERIFY(m_bar->inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x()
            > button->geometry().right());

    m_bar->setLayoutDirection(Qt::RightToLeft);
    m_bar->resize(m_bar->width() + 20, m_bar->height());
    QCOMPARE(button->geometry().right(), m_bar->width() - 1 - kovaPx(4));
    QVERIFY(m_bar->inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x()
            < button->geometry().left());
}

void KovaFilterBarTest::searchesOnReturnOnly()
{
    QSignalSpy searches(m_bar, &KovaFilterBar::sigKeywordChanged);
    for (const auto key : {Qt::Key_Return, Qt::Key_A, Qt::Key_B})
        press(m_bar, key);
    QCOMPARE(searches, QList<QVariantList>{{""}});
    press(m_bar, Qt::Key_Return);
    press(m_bar, Qt::Key_Enter);
    QCOMPARE(searches, (QList<QVariantList>{{""}, {"ab"}, {"ab"}}));
}

void KovaFilterBarTest::downWithoutMenuDoesNothing()
{
    // Once it never had a menu, once the menu is gone.
    for (int time = 0; time < 2; ++time) {
        m_bar->setText("abc");
        m_bar->setCursorPosition(1);
        press(m_bar, Qt::Key_Down);
        QCOMPARE(m_bar->cursorPosition(), 1);
        QVERIFY(!QApplication::activePopupWidget());
        QMenu menu;
        m_bar->setMenu(&menu);
    }
}

void KovaFilterBarTest::menuIsUsedByKeyboard()
{
    QMenu menu("Search in");
    menu.addAction("Names");
    QSignalSpy chosen(menu.addAction("Contents"), &QAction::triggered);
    m_bar->setMenu(&menu);
    QCOMPARE(spoken(m_bar->findChild<KovaIconButton *>()), "Search in");
    menu.setTitle("Look in");
    QCOMPARE(spoken(m_bar->findChild<KovaIconButton *>()), "Look in");

    whenMenuOpens([](QMenu *opened) { press(opened, Qt::Key_Escape); });
    press(m_bar, Qt::Key_Down);
    QVERIFY(!menu.isVisible());
    QVERIFY(m_bar->hasFocus());

    whenMenuOpens([](QMenu *opened) {
        for (const auto key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            press(opened, key);
    });
    press(m_bar, Qt::Key_Down);
    QCOMPARE(chosen.count(), 1);
    press(m_bar, Qt::Key_X);
    QCOMPARE(m_bar->text(), "x");
    m_bar->setMenu(nullptr);
    press(m_bar, Qt::Key_Down);
    QVERIFY(!menu.isVisible());
}

void KovaFilterBarTest::menuOpensAtAPress()
{
    QMenu menu;
    menu.addAction("Names");
    m_bar->setMenu(&menu);
    bool opened = false;
    whenMenuOpens([&](QMenu *) {
        opened = true;
        // It drops down from the button.
        QVERIFY(menu.y() >= m_bar->mapToGlobal(QPoint(0, 0)).y() + m_bar->height() / 2);
        menu.close();
    });
    click(m_bar->findChild<KovaIconButton *>());
    QVERIFY(opened);
    QVERIFY(m_bar->hasFocus());
}

void KovaFilterBarTest::barMayEndInItsMenu()
{
    QMenu menu;
    connect(menu.addAction("Close"), &QAction::triggered, qApp, [this] { delete m_bar; });
    m_bar->setMenu(&menu);
    whenMenuOpens([](QMenu *opened) {
        press(opened, Qt::Key_Down);
        press(opened, Qt::Key_Return);
    });
    press(m_bar, Qt::Key_Down);
    QVERIFY(!m_bar);
}

void KovaFilterBarTest::lateClickChoosesNothing()
{
    QMenu menu;
    m_bar->setMenu(&menu);
    QSignalSpy chosen(menu.addAction("Contents"), &QAction::triggered);
    whenMenuOpens([](QMenu *opened) {
        doubleClickWhileBusy(opened, opened->actionGeometry(opened->actions().first()).center());
    });
    press(m_bar, Qt::Key_Down);
    QCoreApplication::processEvents();
    QCOMPARE(chosen.count(), 1);
}

QTEST_MAIN(KovaFilterBarTest)
#include "kova-filter-bar-test.moc"
