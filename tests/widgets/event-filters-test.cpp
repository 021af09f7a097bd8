#include <kovakit-qt/kovakit-qt.h>

#include <QtTest>

namespace {

class EventLog : public QWidget
{
public:
    bool event(QEvent *event) override
    {
        types.append(event->type());
        return QWidget::event(event);
    }

    QVector<QEvent::Type> types;
};

// Which of the mouse events reach a widget behind @p filter.
QVector<QEvent::Type> passed(QObject *filter)
{
    EventLog log;
    log.installEventFilter(filter);
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                              QEvent::MouseButtonDblClick, QEvent::MouseMove}) {
        QMouseEvent event(type, QPointF(), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&log, &event);
    }
    return log.types;
}

} // namespace

class EventFiltersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void swallowWhatTheyAreFor();
};

void EventFiltersTest::swallowWhatTheyAreFor()
{
    MouseReleaseFilter releases;
    QCOMPARE(passed(&releases),
             (QVector<QEvent::Type>{QEvent::MouseButtonPress, QEvent::MouseButtonDblClick,
                                    QEvent::MouseMove}));
    MouseButtonFilter buttons;
    QCOMPARE(passed(&buttons), QVector<QEvent::Type>{QEvent::MouseMove});
}

QTEST_MAIN(EventFiltersTest)
#include "event-filters-test.moc"
