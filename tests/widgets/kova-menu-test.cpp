#include <kovakit-qt/widgets/kova-menu.h>

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QtTest>

#include <memory>

class KovaMenuTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pullsBack_data();
    void pullsBack();
    void staysOnTheScreen_data();
    void staysOnTheScreen();
};

void KovaMenuTest::pullsBack_data()
{
    QTest::addColumn<QRect>("menu");
    QTest::addColumn<QRect>("workArea");
    QTest::addColumn<QPoint>("expected");
    const auto row = [](const char *name, const QRect &menu, const QRect &area, QPoint expected) {
        QTest::newRow(name) << menu << area << expected;
    };
    const QRect whole(0, 0, 1920, 1080);
    row("inside", {300, 200, 200, 100}, whole, {300, 200});
    row("beyond the left edge", {-20, 10, 200, 100}, whole, {0, 10});
    row("beyond the top", {10, -1, 200, 100}, whole, {10, 0});
    row("beyond the right edge", {1800, 10, 200, 100}, whole, {1719, 10});
    row("beyond the bottom", {10, 1000, 200, 100}, whole, {10, 979});
    row("in the corner", {1900, 1070, 200, 100}, whole, {1719, 979});
    row("up to the last pixel but one", {1719, 979, 200, 100}, whole, {1719, 979});
    row("up to the last pixel", {1720, 980, 200, 100}, whole, {1719, 979});

    row("under a panel at the left", {20, 50, 200, 100}, {64, 0, 1856, 1080}, {0, 50});
    row("under a panel at the top", {20, 10, 200, 100}, {0, 30, 1920, 1050}, {20, 0});
    row("over a panel at the right", {1700, 50, 200, 100}, {0, 0, 1856, 1080}, {1655, 50});
    row("over a panel at the bottom", {20, 1000, 200, 100}, {0, 0, 1920, 1050}, {20, 949});

    const QRect second(1920, 0, 1280, 994);
    row("inside the second screen", {2000, 100, 200, 100}, second, {2000, 100});
    row("at its right edge", {3100, 100, 200, 100}, second, {2999, 100});
    row("over its panel", {2000, 950, 200, 100}, second, {2000, 893});
    row("left of its panel", {1930, 100, 200, 100}, {1984, 0, 1216, 1024}, {0, 100});

    row("wider than the area", {10, 10, 2000, 100}, whole, {-81, 10});
    row("higher than the area", {10, 10, 200, 1080}, whole, {10, -1});
    row("larger, and before it", {-5, -5, 2000, 2000}, whole, {0, 0});
}

void KovaMenuTest::pullsBack()
{
    QFETCH(QRect, menu);
    QFETCH(QRect, workArea);
    QTEST(KovaMenu::positionOnScreen(menu, workArea), "expected");
}

void KovaMenuTest::staysOnTheScreen_data()
{
    QTest::addColumn<QString>("strut"); // of a panel: left, right, top, bottom
    QTest::newRow("no panel") << QString();
    QTest::newRow("left") << "50, 0, 0, 0";
    QTest::newRow("right") << "0, 50, 0, 0";
    QTest::newRow("top") << "0, 0, 50, 0";
    QTest::newRow("bottom") << "0, 0, 0, 50";
}

void KovaMenuTest::staysOnTheScreen()
{
    QFETCH(QString, strut);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QWidget panel;
    if (!strut.isEmpty()) {
        panel.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
        panel.winId();
        QProcess::execute("xprop", {"-id", QString::number(panel.winId()), "-f", "_NET_WM_STRUT",
                                    "32c", "-set", "_NET_WM_STRUT", strut});
        panel.show();
        QTRY_VERIFY(QGuiApplication::primaryScreen()->availableGeometry() != screen);
    }
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();

    for (const bool large : {false, true}) {
        KovaMenu menu;
        for (int i = 0; i < (large ? 60 : 5); ++i)
            menu.addAction(
                "Entry %1 %2".arg(i).arg(large ? QString(400, QLatin1Char('m')) : QString()));
        const QSize size = menu.sizeHint().boundedTo(area.size() - QSize(1, 1));
        for (const QPoint &corner : {QPoint(-50, -50), screen.topLeft(), screen.topRight(),
                                     screen.bottomLeft(), screen.bottomRight()}) {
            menu.resize(size);
            menu.move(corner);
            menu.show();
            QVERIFY(QTest::qWaitForWindowExposed(&menu));
            const QRect shown = menu.geometry();
            // Of a panel at the left or at the top a menu takes no notice.
            QVERIFY(screen.contains(shown) || large);
            QVERIFY(shown.right() <= area.right() && shown.bottom() <= area.bottom());
            menu.hide();
        }
        menu.popup(screen.bottomRight());
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QVERIFY(menu.geometry().right() <= area.right());
        QVERIFY(menu.geometry().bottom() <= area.bottom());
    }
    panel.hide();
    QTRY_COMPARE(QGuiApplication::primaryScreen()->availableGeometry(), screen);
}

QTEST_MAIN(KovaMenuTest)
#include "kova-menu-test.moc"
