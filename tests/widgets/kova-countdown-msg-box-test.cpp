#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QPushButton>
#include <QtTest>

namespace {

QString labelOf(const QMessageBox &box)
{
    return box.button(QMessageBox::Ok)->text();
}

} // namespace

class KovaCountdownMessageBoxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void isBuiltFromStylesAndStrings();
    void iconIsThatOfTheHouse();
    void countsToTheClick();
    void countsBySeconds();
    void secondButtonCancels();
    void goesOnAfterItWasClosed();
    void clicksTheDefaultButtonOfTheCaller();
    void neverClicksAButtonThatIsGone();
    void survivesItsEndWhileCounting();
    void textIsInsertedOnce();
};

void KovaCountdownMessageBoxTest::isBuiltFromStylesAndStrings()
{
    const KovaCountdownMessageBox box(10, nullptr);
    QCOMPARE(labelOf(box), QStringLiteral("OK(10)"));
    QCOMPARE(box.button(QMessageBox::Discard)->text(), QStringLiteral("Cancel"));
    QCOMPARE(box.defaultButton(), box.button(QMessageBox::Ok));
    QCOMPARE(box.styleSheet(), getStyleSheet("component.info_message_box", false));
    QCOMPARE(box.button(QMessageBox::Ok)->styleSheet(),
             getStyleSheet("component.apply_button", false));
    QCOMPARE(box.button(QMessageBox::Discard)->styleSheet(),
             getStyleSheet("component.cancel_button", false));
}

void KovaCountdownMessageBoxTest::iconIsThatOfTheHouse()
{
    KovaCountdownMessageBox alone(10, nullptr);
    alone.setIcon(QMessageBox::Information);
    QWidget parent;
    parent.setStyleSheet(QStringLiteral("QWidget { color: black; }"));
    KovaCountdownMessageBox box(10, &parent);
    box.setIcon(QMessageBox::Information);
    box.show();
    QVERIFY(!alone.iconPixmap().isNull());
    QCOMPARE(box.iconPixmap().toImage(), alone.iconPixmap().toImage());
}

void KovaCountdownMessageBoxTest::countsToTheClick()
{
    KovaCountdownMessageBox box(3, nullptr);
    QSignalSpy finished(&box, &QDialog::finished);
    box.show();
    QCOMPARE(labelOf(box), QStringLiteral("OK(2)"));
    box.hide();
    box.show(); // each show counts one down
    QCOMPARE(labelOf(box), QStringLiteral("OK(1)"));
    box.slotTick();
    QCOMPARE(labelOf(box), QStringLiteral("OK(0)"));
    QVERIFY(finished.isEmpty());
    box.slotTick();
    QVERIFY(finished.wait());
    QCOMPARE(finished.takeFirst().first().toInt(), 1024);

    box.show(); // nothing left to count
    QVERIFY(finished.wait(900));
    QCOMPARE(finished.takeFirst().first().toInt(), 1024);
    QVERIFY2(!finished.wait(1200), "the clock runs again after the count ran out");
    QCOMPARE(labelOf(box), QStringLiteral("OK(0)"));
}

void KovaCountdownMessageBoxTest::countsBySeconds()
{
    QElapsedTimer elapsed;
    elapsed.start();
    QCOMPARE(KovaCountdownMessageBox(0, nullptr).exec(), 1024);
    QVERIFY(elapsed.restart() < 900);
    QCOMPARE(KovaCountdownMessageBox(1, nullptr).exec(), 1024);
    QVERIFY2(elapsed.elapsed() >= 950, qPrintable(QString::number(elapsed.elapsed())));
    QCOMPARE(KovaCountdownMessageBox(INT_MIN, nullptr).exec(), 1024);
}

void KovaCountdownMessageBoxTest::secondButtonCancels()
{
    KovaCountdownMessageBox box(20, nullptr);
    QTimer::singleShot(0, &box, [&] {
        QVERIFY(QTest::qWaitForWindowActive(&box));
        // Without an escape button the countdown cannot be left by accident.
        QTest::keyClick(box.windowHandle(), Qt::Key_Escape);
        box.close();
        QVERIFY(box.isVisible());
        QAbstractButton *second = box.button(QMessageBox::Discard);
        QTest::mouseClick(box.windowHandle(), Qt::LeftButton, {},
                          second->mapTo(&box, second->rect().center()));
    });
    QCOMPARE(box.exec(), 8388608);
}

void KovaCountdownMessageBoxTest::goesOnAfterItWasClosed()
{
    KovaCountdownMessageBox box(2, nullptr);
    QSignalSpy finished(&box, &QDialog::finished);
    box.show();
    box.button(QMessageBox::Discard)->click();
    QCOMPARE(finished.takeFirst().first().toInt(), 8388608);
    QVERIFY(!box.isVisible());
    QVERIFY(finished.wait());
    QCOMPARE(finished.takeFirst().first().toInt(), 1024);
}

void KovaCountdownMessageBoxTest::clicksTheDefaultButtonOfTheCaller()
{
    KovaCountdownMessageBox box(0, nullptr);
    box.setDefaultButton(QMessageBox::Discard);
    QCOMPARE(box.exec(), 8388608);
}

void KovaCountdownMessageBoxTest::neverClicksAButtonThatIsGone()
{
    KovaCountdownMessageBox deleted(2, nullptr);
    deleted.show();
    delete deleted.button(QMessageBox::Ok);
    deleted.slotTick();
    deleted.slotTick();

    KovaCountdownMessageBox replaced(2, nullptr);
    replaced.show();
    replaced.setStandardButtons(QMessageBox::Yes);
    replaced.slotTick();
    replaced.slotTick();

    KovaCountdownMessageBox pressed(1, nullptr);
    pressed.show();
    pressed.slotTick(); // the button is down for 100 ms now
    delete pressed.button(QMessageBox::Ok);
    QTest::qWait(200);
    QVERIFY(deleted.isVisible() && replaced.isVisible() && pressed.isVisible());
}

void KovaCountdownMessageBoxTest::survivesItsEndWhileCounting()
{
    auto *window = new QWidget;
    window->show();
    QPointer<KovaCountdownMessageBox> box = new KovaCountdownMessageBox(0, window);
    QTimer::singleShot(0, window, [&] { delete window; });
    QCOMPARE(box->exec(), 0);
    QVERIFY(!box);
}

void KovaCountdownMessageBoxTest::textIsInsertedOnce()
{
    ComponentStrings::getInstance()->installStrings(
        {{QStringLiteral("ok"), QStringLiteral("100%2")}, {QStringLiteral("cancel"), QString()}});
    QCOMPARE(labelOf(KovaCountdownMessageBox(7, nullptr)), QStringLiteral("100%2(7)"));
}

QTEST_MAIN(KovaCountdownMessageBoxTest)
#include "kova-countdown-msg-box-test.moc"
