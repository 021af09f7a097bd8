// SPDX-License-Identifier: MIT

#include "bench.h"

#include <support/test-host.h>

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

namespace {

QtMessageHandler qtHandler = nullptr;

// Qt's offscreen platform complains of every window that is shown.
void dropSizeHintsMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.contains(QLatin1String("propagateSizeHints")))
        qtHandler(type, context, text);
}

} // namespace

int main(int argc, char **argv)
{
    // The figures of two machines should differ by their speed, not by their fonts' size.
    if (!qEnvironmentVariableIsSet("QT_FONT_DPI"))
        qputenv("QT_FONT_DPI", "96");
    qtHandler = qInstallMessageHandler(dropSizeHintsMessage);
    QApplication application(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures the library against plain Qt, side by side."));
    parser.addHelpOption();
    const QCommandLineOption list(QStringLiteral("list"), QStringLiteral("Only print the rows."));
    const QCommandLineOption only(QStringLiteral("only"),
                                  QStringLiteral("Only the rows with <name> in their name."),
                                  QStringLiteral("name"));
    const QCommandLineOption rounds(QStringLiteral("rounds"),
                                    QStringLiteral("Rounds per row, at least 7."),
                                    QStringLiteral("number"), QStringLiteral("15"));
    const QCommandLineOption strict(QStringLiteral("strict"),
                                    QStringLiteral("Fail if a row is beyond its limit."));
    parser.addOptions({list, only, rounds, strict});
    parser.process(application);

    const int count = parser.value(rounds).toInt();
    if (count < 7) {
        std::fputs("kovakit-bench: a median of fewer than 7 rounds says nothing\n", stderr);
        return 2;
    }

    setUpHost();
    if (!parser.isSet(list))
        std::printf("Platform %s, %d rounds per row\n\n",
                    qPrintable(QGuiApplication::platformName()), count);
    Bench bench(parser.isSet(list) ? Bench::Mode::List : Bench::Mode::Measure, parser.value(only),
                count);
    BenchTopic::runAll(bench);
    return parser.isSet(strict) && bench.missed() ? 1 : 0;
}
