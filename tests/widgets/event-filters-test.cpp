#include <kovakit-qt/kovakit-qt.h>

#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

class EventFiltersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void swallowWhatTheyAreFor();
};

void EventFiltersTest::swallowWhatTheyAreFor()
{
    QPushButton button;
    QSignalSpy presses(&button, &QPushButton::pressed);
    QSignalSpy clicks(&button, &QPushButton::clicked);
    showActive(&button);
    MouseReleaseFilter releaseFilter;
    button.installEventFilter(&releaseFilter);
    click(&button);
    QCOMPARE(presses.count(), 1);
    QVERIFY(button.isDown());
    button.setDown(false);
    MouseButtonFilter buttonFilter;
    button.installEventFilter(&buttonFilter);
    QTest::mouseDClick(button.windowHandle(), Qt::LeftButton);
    QCOMPARE(presses.count(), 1);
    press(&button, Qt::Key_Space); // keys pass
    QCOMPARE(clicks.count(), 1);
}

QTEST_MAIN(EventFiltersTest)
#include "event-filters-test.moc"
