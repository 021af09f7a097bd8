// SPDX-License-Identifier: MIT

#include "bench.h"

#include <kovakit-qt/widgets/kova-date-selector.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QEvent>
#include <QVBoxLayout>

#ifdef KOVAKIT_BENCH_KDATECOMBOBOX
#include <kdatecombobox.h>
#endif

#include <memory>

namespace {

// Waits until a window that was not there before has been painted: the popup.
class PopupWatcher : public QObject
{
public:
    explicit PopupWatcher(const QWidget *window)
        : m_window(window)
    {
        qApp->installEventFilter(this);
    }

    void wait()
    {
        while (!m_painted)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType())
            m_painted |= static_cast<QWidget *>(watched)->window() != m_window;
        return false;
    }

private:
    const QWidget *m_window;
    bool m_painted = false;
};

// A combo box that opens a calendar, as one makes it oneself of Qt's parts.
class PlainDateBox : public QComboBox
{
public:
    explicit PlainDateBox(QWidget *parent)
        : QComboBox(parent)
        , m_popup(new QFrame(this, Qt::Popup))
        , m_calendar(new QCalendarWidget)
    {
        addItem(QStringLiteral("Choose a date"));
        auto *layout = new QVBoxLayout(m_popup);
        layout->addWidget(m_calendar);
    }

    void showPopup() override
    {
        m_popup->move(mapToGlobal(rect().bottomLeft()));
        m_popup->show();
        m_calendar->setFocus();
    }

    void hidePopup() override
    {
        m_popup->hide();
        QComboBox::hidePopup();
    }

private:
    QFrame *m_popup;
    QCalendarWidget *m_calendar;
};

QComboBox *houseBox(QWidget *parent)
{
    return new KovaDateSelector(QStringLiteral("Choose a date"), parent);
}

QComboBox *plainBox(QWidget *parent)
{
    return new PlainDateBox(parent);
}

// The time until the calendar of a box that is made now has been seen.
Bench::Side firstOpening(QComboBox *(*make)(QWidget *))
{
    return [make] {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        showAndWaitForPaint(&window);
        const Stopwatch watch;
        QComboBox *box = make(&window);
        layout->addWidget(box);
        box->show();
        layout->activate();
        PopupWatcher popup(&window);
        box->showPopup();
        popup.wait();
        const double time = watch.milliseconds();
        box->hidePopup();
        return time;
    };
}

void dates(Bench &bench)
{
    bench.compare({"dates/first-opening", "ms", 0}, firstOpening(houseBox), firstOpening(plainBox));
#ifdef KOVAKIT_BENCH_KDATECOMBOBOX
    const auto peer = [](QWidget *parent) -> QComboBox * { return new KDateComboBox(parent); };
    bench.compare({"dates/first-opening-peer", "ms", 1}, firstOpening(houseBox),
                  firstOpening(peer));
#endif
}

const BenchTopic topic(dates);

} // namespace
