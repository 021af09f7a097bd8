// SPDX-License-Identifier: MIT

#include "bench.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QRegExp>

namespace {

constexpr int kilobyte = 1024;

// The style text of a button, over and over.
QString styleText(int kilobytes)
{
    const QString entry = getStyleSheet("component.apply_button", true);
    QString text;
    text.reserve(kilobytes * kilobyte + entry.size());
    while (text.size() < kilobytes * kilobyte)
        text.append(entry);
    text.truncate(kilobytes * kilobyte);
    return text;
}

// The least that a regular expression can do: one search, and every length written once.
QString scaledByRegExp(const QString &text)
{
    const double scale = DPIinfo::getInstance()->getDPI();
    QRegExp length(QStringLiteral("(\\d+\\.?\\d*)(px)"));
    QString result;
    int done = 0;
    for (int at = length.indexIn(text); at >= 0; at = length.indexIn(text, done)) {
        result.append(text.midRef(done, at - done));
        result.append(QStringLiteral("%1px").arg(int(length.cap(1).toDouble() * scale)));
        done = at + length.matchedLength();
    }
    result.append(text.midRef(done));
    return result;
}

QString scaled(const QString &text)
{
    return DPIinfo::getInstance()->getScaledStyleSheet(text);
}

// Microseconds per kilobyte. Small texts are scaled many times over, so that every size is
// measured for about as long.
Bench::Side timePerKilobyte(QString (*pass)(const QString &), int kilobytes)
{
    return [pass, kilobytes] {
        const QString text = styleText(kilobytes);
        const int times = qMax(1, kilobyte / kilobytes);
        qint64 sum = 0;
        const Stopwatch watch;
        for (int i = 0; i < times; ++i)
            sum += pass(text).size();
        const double milliseconds = watch.milliseconds();
        if (sum < 0)
            qFatal("unreachable, but it keeps the results in use");
        return milliseconds * 1000 / times / kilobytes;
    };
}

void pixelPass(Bench &bench)
{
    const char *const unit = "us/KB";
    bench.compare({"pixel-pass/1KB", unit, 0.25}, timePerKilobyte(scaled, 1),
                  timePerKilobyte(scaledByRegExp, 1));
    bench.compare({"pixel-pass/10KB", unit, 0.25}, timePerKilobyte(scaled, 10),
                  timePerKilobyte(scaledByRegExp, 10));
    bench.compare({"pixel-pass/1MB", unit, 0.25}, timePerKilobyte(scaled, kilobyte),
                  timePerKilobyte(scaledByRegExp, kilobyte));
    bench.compare({"pixel-pass/10KB-to-1KB", unit, 1.2}, timePerKilobyte(scaled, 10),
                  timePerKilobyte(scaled, 1));
    bench.compare({"pixel-pass/1MB-to-1KB", unit, 1.2}, timePerKilobyte(scaled, kilobyte),
                  timePerKilobyte(scaled, 1));
}

const BenchTopic topic(pixelPass);

} // namespace
