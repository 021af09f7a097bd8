// SPDX-License-Identifier: MIT

#include "support/test-host.h"

#include <QProcess>
#include <QScreen>
#include <QtTest>

// Starts the built gallery twice, as a person does who clicks its icon again.
class SecondStartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void showsTheFirstWindow_data();
    void showsTheFirstWindow();
};

namespace {

const QColor coverColour(255, 0, 255);

QString xdotool(const QStringList &arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    process.waitForFinished();
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

QString titleOf(const QString &window)
{
    return xdotool({"getwindowname", window});
}

std::unique_ptr<QProcess> startGallery(const QString &page)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->start(KOVAKIT_GALLERY, {"--page", page});
    return process;
}

} // namespace

void SecondStartTest::initTestCase()
{
    for (const char *name : {"TMPDIR", "XDG_RUNTIME_DIR"})
        qputenv(name, QFile::encodeName(scratchFolder()));
    QVERIFY2(!xdotool({"version"}).isEmpty(), "xdotool is not installed");
}

void SecondStartTest::showsTheFirstWindow_data()
{
    QTest::addColumn<bool>("isMinimized");
    QTest::newRow("covered by another window") << false;
    QTest::newRow("minimized") << true;
}

void SecondStartTest::showsTheFirstWindow()
{
    QFETCH(bool, isMinimized);
    const std::unique_ptr<QProcess> first = startGallery("buttons");
    QTRY_VERIFY_WITH_TIMEOUT(titleOf(xdotool({"getactivewindow"})).startsWith("Buttons"), 30000);
    const QString window = xdotool({"getactivewindow"});

    QWidget cover;
    cover.setPalette(coverColour);
    cover.setGeometry(cover.screen()->geometry());
    cover.show();
    cover.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&cover));
    const auto topmost = [&cover] {
        QScreen *screen = cover.screen();
        const QPoint middle = screen->geometry().center();
        return screen->grabWindow(0, middle.x(), middle.y(), 1, 1).toImage().pixelColor(0, 0);
    };
    QTRY_COMPARE(topmost(), coverColour);
    if (isMinimized)
        xdotool({"windowminimize", "--sync", window});

    const std::unique_ptr<QProcess> second = startGallery("dates");
    QVERIFY(second->waitForFinished(20000));
    QCOMPARE(second->exitStatus(), QProcess::NormalExit);
    QCOMPARE(second->exitCode(), 0);
    QTRY_COMPARE(xdotool({"getactivewindow"}), window);
    QTRY_VERIFY(topmost() != coverColour);
    QTRY_VERIFY2(titleOf(window).startsWith("Dates"), qPrintable(titleOf(window)));

    QCOMPARE(first->state(), QProcess::Running);
    // On a busy machine the window manager may not have the focus where it says for a moment.
    for (int presses = 0; presses < 10 && first->state() == QProcess::Running; ++presses) {
        xdotool({"key", "alt+F4"});
        first->waitForFinished(3000);
    }
    QCOMPARE(first->state(), QProcess::NotRunning);
    QCOMPARE(first->exitCode(), 0);
}

QTEST_MAIN(SecondStartTest)
#include "second-start-test.moc"
