// SPDX-License-Identifier: MIT

#include "bench.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QVector>
#include <QWidget>

#include <algorithm>
#include <cstdio>

#include <malloc.h>

namespace {

using Topics = QVector<void (*)(Bench &)>;

Topics &topics()
{
    static Topics list;
    return list;
}

double quantile(QVector<double> values, double part)
{
    const auto at = values.begin() + qRound(part * (values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

double median(const QVector<double> &values)
{
    return quantile(values, 0.5);
}

QString number(double value)
{
    const double size = qAbs(value);
    return QString::number(value, 'f', size >= 1000 ? 0 : size >= 10 ? 1 : 3);
}

class PaintWatcher : public QObject
{
public:
    explicit PaintWatcher(QWidget *window) { window->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        // The window's own paint event comes before those of its children.
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(
                this, [this] { painted = true; }, Qt::QueuedConnection);
        return false;
    }

    bool painted = false;
};

} // namespace

Bench::Bench(Mode mode, const QString &only, int rounds)
    : m_mode(mode)
    , m_only(only)
    , m_rounds(rounds)
{
    if (mode == Mode::Measure) {
        std::printf("%-30s %12s %12s %-6s %7s %13s %8s\n", "", "ours", "yardstick", "", "ratio",
                    "middle half", "at most");
    }
}

bool Bench::onX11()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

bool Bench::wants(const BenchRow &row) const
{
    if (!QLatin1String(row.name).contains(m_only))
        return false;
    if (m_mode == Mode::List)
        std::puts(row.name);
    return m_mode == Mode::Measure;
}

void Bench::compare(const BenchRow &row, const Side &ours, const Side &yardstick)
{
    if (!wants(row))
        return;
    yardstick();
    ours();

    QVector<double> left;
    QVector<double> right;
    QVector<double> ratios;
    for (int round = 0; round < m_rounds; ++round) {
        if (round % 2 == 0) {
            left.append(ours());
            right.append(yardstick());
        } else {
            right.append(yardstick());
            left.append(ours());
        }
        ratios.append(left.last() / right.last());
    }

    const QString spread = QStringLiteral("%1 - %2")
                               .arg(quantile(ratios, 0.25), 0, 'f', 3)
                               .arg(quantile(ratios, 0.75), 0, 'f', 3);
    const double ratio = median(ratios);
    print(row,
          QStringLiteral("%1 %2 %3 %4 %5")
              .arg(number(median(left)), 12)
              .arg(number(median(right)), 12)
              .arg(QLatin1String(row.unit), -6)
              .arg(ratio, 7, 'f', 3)
              .arg(spread, 13),
          ratio);
}

void Bench::measure(const BenchRow &row, const Side &figure)
{
    if (!wants(row))
        return;
    figure();
    QVector<double> values;
    for (int round = 0; round < m_rounds; ++round)
        values.append(figure());
    const double value = median(values);
    print(row,
          QStringLiteral("%1 %2 %3 %4 %5")
              .arg(number(value), 12)
              .arg(QString(), 12)
              .arg(QLatin1String(row.unit), -6)
              .arg(QString(), 7)
              .arg(QString(), 13),
          value);
}

void Bench::print(const BenchRow &row, const QString &figures, double value)
{
    std::printf("%-30s %s", row.name, qPrintable(figures));
    if (row.atMost > 0) {
        const bool good = value <= row.atMost;
        m_missed = m_missed || !good;
        std::printf(" %8.2f  %s", row.atMost, good ? "ok" : "MISSED");
    }
    std::puts("");
    std::fflush(stdout);
}

BenchTopic::BenchTopic(void (*topic)(Bench &))
{
    topics().append(topic);
}

void BenchTopic::runAll(Bench &bench)
{
    for (const auto topic : qAsConst(topics()))
        topic(bench);
}

double heapBytes()
{
    const auto info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

void showAndWaitForPaint(QWidget *window)
{
    PaintWatcher watcher(window);
    window->show();
    while (!watcher.painted)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
