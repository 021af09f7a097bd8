// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// Runs @p act once a menu is open; the one that opens it is back only when it is closed.
void whenMenuOpens(const std::function<void(QMenu *)> &act)
{
    QTimer::singleShot(1, qApp, [act] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (menu && menu->windowHandle()->isExposed())
            act(menu);
        else
            whenMenuOpens(act);
    });
}

} // namespace

// The search field: its button and where it lies, when it searches, and its menu by keyboard and
// mouse.
class KovaFilterBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void keepsThePlaceOfItsButtonFree();
    void searchesOnReturnOnly();
    void menuIsUsedByKeyboard();
    void menuOpensAtAPressAndIgnoresLateClicks();

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
    press(m_bar, {Qt::Key_Tab, Qt::Key_M});
    QCOMPARE(m_bar->text(), "m"); // the button is no stop of its own
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
    press(m_bar, {Qt::Key_Return, Qt::Key_A, Qt::Key_B});
    QCOMPARE(searches, QList<QVariantList>{{""}});
    press(m_bar, {Qt::Key_Return, Qt::Key_Enter});
    QCOMPARE(searches, (QList<QVariantList>{{""}, {"ab"}, {"ab"}}));
}

void KovaFilterBarTest::menuIsUsedByKeyboard()
{
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
            press(opened, {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
        });
        press(m_bar, Qt::Key_Down);
        QCOMPARE(chosen.count(), 1);
    }
    // The menu is gone.
    press(m_bar, Qt::Key_X);
    QCOMPARE(m_bar->text(), "x");
    m_bar->setCursorPosition(0);
    press(m_bar, Qt::Key_Down);
    QCOMPARE(m_bar->cursorPosition(), 0);
    QVERIFY(!QApplication::activePopupWidget());
}

void KovaFilterBarTest::menuOpensAtAPressAndIgnoresLateClicks()
{
    QMenu menu;
    QSignalSpy chosen(menu.addAction("Contents"), &QAction::triggered);
    m_bar->setMenu(&menu);
    whenMenuOpens([this](QMenu *opened) {
        // It drops down from the button.
        QVERIFY(opened->y() >= m_bar->mapToGlobal(QPoint(0, 0)).y() + m_bar->height() / 2);
        doubleClickWhileBusy(opened, opened->actionGeometry(opened->actions().first()).center());
    });
    click(m_bar->findChild<KovaIconButton *>());
    QCoreApplication::processEvents();
    QCOMPARE(chosen.count(), 1);
    QVERIFY(m_bar->hasFocus());
    m_bar->setMenu(nullptr);
    press(m_bar, Qt::Key_Down);
    QVERIFY(!menu.isVisible());

    // The bar may end in its menu.
    connect(menu.addAction("Close"), &QAction::triggered, qApp, [this] { delete m_bar; });
    m_bar->setMenu(&menu);
    whenMenuOpens([](QMenu *opened) { press(opened, {Qt::Key_Up, Qt::Key_Return}); });
    press(m_bar, Qt::Key_Down);
    QVERIFY(!m_bar);
}

QTEST_MAIN(KovaFilterBarTest)
#include "kova-filter-bar-test.moc"
