#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAccessible>
#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>

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

void press(QWidget *window, Qt::Key key)
{
    QTest::keyClick(window->windowHandle(), key);
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
    void menuMayEndFirst();
    void barMayEndInItsMenu();

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
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_bar->setFocus();
}

void KovaFilterBarTest::keepsThePlaceOfItsButtonFree()
{
    const auto *button = m_bar->findChild<KovaIconButton *>();
    QCOMPARE(m_bar->height(), kovaPx(28));
    QCOMPARE(button->geometry(), QRect(kovaPx(4), kovaPx(2), kovaPx(34), kovaPx(24)));
    QCOMPARE(button->cursor().shape(), Qt::ArrowCursor);
    press(m_window.get(), Qt::Key_M);
    m_bar->setCursorPosition(0);
    QVERIFY(m_bar->inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x()
            > button->geometry().right());
}

void KovaFilterBarTest::searchesOnReturnOnly()
{
    QSignalSpy searches(m_bar, &KovaFilterBar::sigKeywordChanged);
    press(m_window.get(), Qt::Key_Return);
    QCOMPARE(searches.takeFirst().at(0).toString(), QString());
    press(m_window.get(), Qt::Key_A);
    press(m_window.get(), Qt::Key_B);
    QVERIFY(searches.isEmpty());
    press(m_window.get(), Qt::Key_Return);
    press(m_window.get(), Qt::Key_Enter);
    QCOMPARE(searches.count(), 2);
    QCOMPARE(searches.at(1).at(0).toString(), QStringLiteral("ab"));
}

void KovaFilterBarTest::downWithoutMenuDoesNothing()
{
    m_bar->setText(QStringLiteral("abc"));
    m_bar->setCursorPosition(1);
    press(m_window.get(), Qt::Key_Down);
    QCOMPARE(m_bar->cursorPosition(), 1);
    QVERIFY(!QApplication::activePopupWidget());
    press(m_window.get(), Qt::Key_Right);
    QCOMPARE(m_bar->cursorPosition(), 2);
}

void KovaFilterBarTest::menuIsUsedByKeyboard()
{
    QMenu menu(QStringLiteral("Search in"));
    menu.addAction(QStringLiteral("Names"));
    QAction *contents = menu.addAction(QStringLiteral("Contents"));
    QSignalSpy chosen(contents, &QAction::triggered);
    m_bar->setMenu(&menu);
    QCOMPARE(QAccessible::queryAccessibleInterface(m_bar->findChild<KovaIconButton *>())
                 ->text(QAccessible::Name),
             QStringLiteral("Search in"));

    whenMenuOpens([&menu](QMenu *opened) {
        QCOMPARE(opened, &menu);
        press(opened, Qt::Key_Escape);
    });
    press(m_window.get(), Qt::Key_Down);
    QVERIFY(!menu.isVisible());
    QVERIFY(m_bar->hasFocus());

    whenMenuOpens([](QMenu *opened) {
        press(opened, Qt::Key_Down);
        press(opened, Qt::Key_Down);
        press(opened, Qt::Key_Return);
    });
    press(m_window.get(), Qt::Key_Down);
    QCOMPARE(chosen.count(), 1);
    QVERIFY(m_bar->hasFocus());
    press(m_window.get(), Qt::Key_X);
    QCOMPARE(m_bar->text(), QStringLiteral("x"));
    m_bar->setMenu(nullptr);
    press(m_window.get(), Qt::Key_Down);
    QVERIFY(!menu.isVisible());
}

void KovaFilterBarTest::menuOpensAtAPress()
{
    QMenu menu;
    menu.addAction(QStringLiteral("Names"));
    m_bar->setMenu(&menu);
    bool opened = false;
    whenMenuOpens([&opened, this](QMenu *menuOpened) {
        opened = true;
        // It drops down from the button.
        QVERIFY(menuOpened->y() >= m_bar->mapToGlobal(QPoint(0, 0)).y() + m_bar->height() / 2);
        menuOpened->close();
    });
    const QRect button = m_bar->findChild<KovaIconButton *>()->geometry();
    QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {}, button.center());
    QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, {}, button.center());
    QVERIFY(opened);
    QVERIFY(m_bar->hasFocus());
}

void KovaFilterBarTest::menuMayEndFirst()
{
    auto menu = std::make_unique<QMenu>();
    m_bar->setMenu(menu.get());
    menu.reset();
    press(m_window.get(), Qt::Key_Down);
    QVERIFY(!QApplication::activePopupWidget());
}

void KovaFilterBarTest::barMayEndInItsMenu()
{
    QMenu menu;
    QAction *action = menu.addAction(QStringLiteral("Close"));
    connect(action, &QAction::triggered, qApp, [this] { delete m_bar; });
    m_bar->setMenu(&menu);
    whenMenuOpens([](QMenu *opened) {
        press(opened, Qt::Key_Down);
        press(opened, Qt::Key_Return);
    });
    press(m_window.get(), Qt::Key_Down);
    QVERIFY(!m_bar);
}

QTEST_MAIN(KovaFilterBarTest)
#include "kova-filter-bar-test.moc"
