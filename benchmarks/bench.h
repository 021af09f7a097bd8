// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QString>

#include <functional>

class QWidget;

// What a topic's file hands over to be measured.
//
//     static void controls(Bench &bench)
//     {
//         bench.compare({"controls/line-edit", "ms", 1.05}, [] { ... }, [] { ... });
//     }
//     static const BenchTopic topic(controls);
//
// A topic is also run to list its rows, and then nothing is measured: whatever is costly belongs
// into the sides.

// One row of the table.
struct BenchRow
{
    const char *name; // topic/what
    const char *unit;
    double atMost; // the ratio that is still good; 0 for a row that only informs
};

class Bench
{
public:
    // A side does its work once and returns its figure, in the unit of the row. What it should not
    // be charged for it does before and after it looks at the clock.
    using Side = std::function<double()>;

    enum class Mode { List, Measure };

    Bench(Mode mode, const QString &only, int rounds);

    // Enters the ratio of @p ours to @p yardstick. Both are measured in the same rounds, taking
    // turns at going first, after one round that does not count; the ratio is the median of the
    // rounds' ratios, so that a machine that is busy for a while slows both sides of it.
    void compare(const BenchRow &row, const Side &ours, const Side &yardstick);

    // Enters the median of one figure. The row's limit is one for the figure itself.
    void measure(const BenchRow &row, const Side &figure);

    // Whether a row was measured that is beyond its limit.
    [[nodiscard]] bool missed() const { return m_missed; }

    // Whether there is an X server, with a window manager, to show windows on.
    [[nodiscard]] static bool onX11();

private:
    [[nodiscard]] bool wants(const BenchRow &row) const;
    void print(const BenchRow &row, const QString &figures, double value);

    const Mode m_mode;
    const QString m_only;
    const int m_rounds;
    bool m_missed = false;
};

class BenchTopic
{
public:
    explicit BenchTopic(void (*topic)(Bench &));

    // Runs every topic.
    static void runAll(Bench &bench);
};

class Stopwatch
{
public:
    Stopwatch() { m_timer.start(); }
    [[nodiscard]] double milliseconds() const { return double(m_timer.nsecsElapsed()) / 1e6; }

private:
    QElapsedTimer m_timer;
};

// The bytes that are allocated on the heap at present.
[[nodiscard]] double heapBytes();

// Shows @p window and returns when it has been painted for the first time.
void showAndWaitForPaint(QWidget *window);
