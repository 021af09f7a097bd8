#include <kovakit-qt/widgets/kova-menu.h>

#include "support/user-input.h"

#include <QtTest>

class KovaMenuTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pullsBack();
    void staysOnTheScreen();
    void lateClickChoosesNothing();
};

void KovaMenuTest::pullsBack()
{
    struct Case
    {
        QRect menu;
        QRect workArea;
        QPoint expected;
    };
    const QRect whole(0, 0, 1920, 1080);
    const QRect second(1920, 0, 1280, 994);
    const Case cases[] = {
        {{300, 200, 200, 100}, whole, {300, 200}},
        {{-20, 10, 200, 100}, whole, {0, 10}},
        {{10, -1, 200, 100}, whole, {10, 0}},
        {{1800, 1000, 200, 100}, whole, {1719, 979}},
        // The last pixel of the area is left free.
        {{1719, 979, 200, 100}, whole, {1719, 979}},
        {{1720, 980, 200, 100}, whole, {1719, 979}},
        // Of a panel at the left or at the top a menu takes no notice: it goes to the very edge.
        {{20, 50, 200, 100}, {64, 0, 1856, 1080}, {0, 50}},
        {{20, 10, 200, 100}, {0, 30, 1920, 1050}, {20, 0}},
        {{1930, 100, 200, 100}, {1984, 0, 1216, 1024}, {0, 100}},
        {{2000, 100, 200, 100}, second, {2000, 100}},
        {{3100, 950, 200, 100}, second, {2999, 893}},
        // Larger than the area.
        {{10, 10, 2000, 100}, whole, {-81, 10}},
        {{-5, -5, 2000, 2000}, whole, {0, 0}},
    };
    for (const Case &c : cases)
        QCOMPARE(KovaMenu::positionOnScreen(c.menu, c.workArea), c.expected);
}

void KovaMenuTest::staysOnTheScreen()
{
    const QScreen *display = QGuiApplication::primaryScreen();
    const QRect screen = display->geometry();
    // A panel at the right and at the bottom.
    QWidget panel;
    panel.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    QProcess::execute("xprop", {"-id", QString::number(panel.winId()), "-f", "_NET_WM_STRUT", "32c",
                                "-set", "_NET_WM_STRUT", "0, 50, 0, 50"});
    panel.show();
    QTRY_VERIFY(display->availableGeometry() != screen);
    const QRect area = display->availableGeometry();

    for (const bool large : {false, true}) {
        KovaMenu menu;
        for (int i = 0; i < (large ? 60 : 5); ++i)
            menu.addAction(large ? QString(400, 'm') : QString("Entry"));
        const QSize size = menu.sizeHint().boundedTo(area.size() - QSize(1, 1));
        for (const QPoint &corner : {QPoint(-50, -50), screen.topLeft(), screen.topRight(),
                                     screen.bottomLeft(), screen.bottomRight()}) {
            menu.resize(size);
            menu.move(corner);
            menu.show();
            QVERIFY(QTest::qWaitForWindowExposed(&menu));
            QVERIFY(screen.contains(menu.geometry()) || large);
            QVERIFY(menu.geometry().right() <= area.right());
            QVERIFY(menu.geometry().bottom() <= area.bottom());
            menu.hide();
        }
        menu.popup(screen.bottomRight());
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QVERIFY(menu.geometry().right() <= area.right());
        QVERIFY(menu.geometry().bottom() <= area.bottom());
    }
}

void KovaMenuTest::lateClickChoosesNothing()
{
    KovaMenu menu;
    QSignalSpy chosen(menu.addAction("Entry"), &QAction::triggered);
    menu.popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    doubleClickWhileBusy(&menu, menu.actionGeometry(menu.actions().constFirst()).center());
    QTRY_VERIFY(!menu.isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(chosen.count(), 1);
}

QTEST_MAIN(KovaMenuTest)
#include "kova-menu-test.moc"
