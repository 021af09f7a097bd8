// SPDX-License-Identifier: MIT

#include "many-widgets.h"

#include <QGridLayout>
#include <QWidget>

#include <memory>

namespace {

constexpr int widgetCount = 200;
constexpr int columns = 10;

// The window's layout takes the widgets over.
std::unique_ptr<QWidget> fullWindow(const MakeWidget &make)
{
    auto window = std::make_unique<QWidget>();
    auto *grid = new QGridLayout(window.get());
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    for (int i = 0; i < widgetCount; ++i)
        grid->addWidget(make(i), i / columns, i % columns);
    showAndWaitForPaint(window.get());
    return window;
}

} // namespace

Bench::Side buildAndShowTime(const MakeWidget &make)
{
    return [make] {
        const Stopwatch watch;
        const auto window = fullWindow(make);
        return watch.milliseconds();
    };
}

Bench::Side bytesPerWidget(const MakeWidget &make)
{
    return [make] {
        const double before = heapBytes();
        const auto window = fullWindow(make);
        return (heapBytes() - before) / widgetCount;
    };
}
