// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/answers.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QPushButton>
#include <QtTest>

namespace {

QString labelOf(const QMessageBox &box)
{
    return box.button(QMessageBox::Ok)->text();
}

} // namespace

// A box that presses its default button after so many seconds, unless its user is faster.
class KovaCountdownMessageBoxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void looksLikeABoxOfTheHouse();
    void countsToTheClick();
    void countsBySeconds();
    void cancelsInThreeWays();
    void endsWithItsWindow();
};

void KovaCountdownMessageBoxTest::looksLikeABoxOfTheHouse()
{
    KovaCountdownMessageBox alone(10, nullptr);
    alone.setIcon(QMessageBox::Information);
    QCOMPARE(alone.button(QMessageBox::Discard)->text(), "Cancel");
    // The icon is the same under a parent with a style of its own.
    QWidget parent;
    parent.setStyleSheet("QWidget { color: black; }");
    KovaCountdownMessageBox box(10, &parent);
    box.setIcon(QMessageBox::Information);
    box.show();
    QVERIFY(!alone.iconPixmap().isNull());
    QCOMPARE(box.iconPixmap().toImage(), alone.iconPixmap().toImage());

    // The count is put after any string, whatever is in it.
    ComponentStrings::getInstance()->installStrings({{"ok", "100%2"}, {"cancel", ""}});
    QCOMPARE(labelOf(KovaCountdownMessageBox(7, nullptr)), "100%2(7)");
    installThemeStrings("enu");
}

void KovaCountdownMessageBoxTest::countsToTheClick()
{
    KovaCountdownMessageBox box(3, nullptr);
    QSignalSpy finished(&box, &QDialog::finished);
    box.show();
    QCOMPARE(labelOf(box), "OK(2)");
    box.hide();
    box.show(); // each show counts one down
    QCOMPARE(labelOf(box), "OK(1)");
    box.slotTick();
    QCOMPARE(labelOf(box), "OK(0)");
    QVERIFY(finished.isEmpty());
    box.slotTick();
    QVERIFY(finished.wait());
    QCOMPARE(finished.last(), QVariantList{accepted});

    box.show(); // nothing left to count
    QVERIFY(finished.wait(900));
    QVERIFY2(!finished.wait(1200), "the clock runs again after the count ran out");
    QCOMPARE(labelOf(box), "OK(0)");
}

void KovaCountdownMessageBoxTest::countsBySeconds()
{
    QElapsedTimer elapsed;
    elapsed.start();
    QCOMPARE(KovaCountdownMessageBox(INT_MIN, nullptr).exec(), accepted);
    QVERIFY(elapsed.restart() < 900);
    KovaCountdownMessageBox box(1, nullptr);
    box.setDefaultButton(QMessageBox::Discard); // the one that gets clicked then
    QCOMPARE(box.exec(), refused);
    QVERIFY2(elapsed.elapsed() >= 950, qPrintable(QString::number(elapsed.elapsed())));
}

void KovaCountdownMessageBoxTest::cancelsInThreeWays()
{
    using Way = std::function<void(KovaCountdownMessageBox &)>;
    const QPair<const char *, Way> ways[] = {
        {"escape", [](auto &box) { press(&box, Qt::Key_Escape); }},
        {"close", [](auto &box) { QVERIFY(box.close()); }},
        {"click", [](auto &box) { click(box.button(QMessageBox::Discard)); }},
    };
    for (const auto &[name, cancel] : ways) {
        KovaCountdownMessageBox box(3, nullptr);
        QSignalSpy finished(&box, &QDialog::finished);
        showActive(&box);
        cancel(box);
        // A box that is kept counts on and presses its button all the same.
        QVERIFY2(finished.count() == 1 && finished.wait(), name);
        QCOMPARE(finished, (QList<QVariantList>{{refused}, {accepted}}));
    }
    // Without an escape button it cannot be left by accident.
    KovaCountdownMessageBox stubborn(1, nullptr);
    stubborn.setEscapeButton(nullptr);
    stubborn.setStandardButtons(QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Yes);
    stubborn.show();
    QVERIFY(!stubborn.close());
    // A button that is gone is never clicked.
    delete stubborn.button(QMessageBox::Ok);
    stubborn.slotTick();
    QVERIFY(stubborn.isVisible());
}

void KovaCountdownMessageBoxTest::endsWithItsWindow()
{
    auto *window = new QWidget;
    window->show();
    QPointer<KovaCountdownMessageBox> box = new KovaCountdownMessageBox(0, window);
    QTimer::singleShot(0, window, [&] { delete window; });
    QCOMPARE(box->exec(), 0);
    QVERIFY(!box);
}

QTEST_MAIN(KovaCountdownMessageBoxTest)
#include "kova-countdown-msg-box-test.moc"
