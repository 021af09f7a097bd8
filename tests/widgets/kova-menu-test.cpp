// SPDX-License-Identifier: MIT

#include <kovakit-qt/widgets/kova-menu.h>

#include "support/user-input.h"

#include <QtTest>

// The menu: where it goes to be on the screen, as numbers and beside a real panel, and a late
// click.
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
    const QSize size(200, 100);
    const QRect whole(0, 0, 1920, 1080);
    const std::tuple<QRect, QRect, QPoint> cases[] = {
        {{{300, 0}, size}, whole, {300, 0}},
        {{{-20, 10}, size}, whole, {0, 10}},
        {{{10, -1}, size}, whole, {10, 0}},
        // The last pixel of the area is left free.
        {{{1719, 979}, size}, whole, {1719, 979}},
        {{{1720, 980}, size}, whole, {1719, 979}},
        // Of a panel at the left or at the top a menu takes no notice: it goes to the very edge.
        {{{20, 50}, size}, {64, 0, 1856, 1080}, {0, 50}},
        {{{20, 10}, size}, {0, 30, 1920, 1050}, {20, 0}},
        {{{3100, 950}, size}, {1920, 0, 1280, 994}, {2999, 893}},
        // Larger than the area.
        {{10, 10, 2000, 100}, whole, {-81, 10}},
        {{-5, -5, 2000, 2000}, whole, {0, 0}},
    };
    for (const auto &[menu, workArea, expected] : cases)
        QCOMPARE(KovaMenu::positionOnScreen(menu, workArea), expected);
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
        for (const QPoint &corner : {QPoint(-50, -50), screen.topLeft(), screen.topRight(),
                                     screen.bottomLeft(), screen.bottomRight()}) {
            menu.resize(menu.sizeHint().boundedTo(area.size() - QSize(1, 1)));
            menu.move(corner);
            menu.show();
            QVERIFY(QTest::qWaitForWindowExposed(&menu));
            QVERIFY(screen.contains(menu.geometry()) || large);
            QVERIFY(menu.geometry().right() <= area.right());
            QVERIFY(menu.geometry().bottom() <= area.bottom());
            menu.hide();
        }
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
