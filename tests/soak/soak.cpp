// SPDX-License-Identifier: MIT

#include "usage.h"

#include "support/answers.h"
#include "support/http-server.h"
#include "support/pictures.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QtTest>
#include <QtWidgets>

#include <cstdio>

// Does what a program of many hours does, thousands of times, and tells what stays behind.

namespace {

// Whatever the count: caches of Qt and of the allocator that are not full after the warm-up.
constexpr int freeKilobytes = 512;
constexpr int freeHandles = 4;

// What is done again and again, and how much of it may stay behind each time.
struct Journey
{
    const char *name;
    int count;
    double mostBytes; // for each time
    std::function<void(int index)> once;
};

template<typename Condition>
void waitUntil(const Condition &condition, const char *what)
{
    if (!QTest::qWaitFor(condition, 10000))
        qFatal("waited in vain until %s", what);
}

class Window : public QWidget
{
public:
    Window()
    {
        resize(700, 400);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(new QLineEdit);
        layout->addStretch();
        show();
        activateWindow();
        waitUntil([this] { return isActiveWindow(); }, "the window is active");
    }
};

template<class Sheet>
void answerSheet(Sheet *sheet, QWidget *window, bool waits)
{
    KovaMask::createMask(sheet, window, KovaMask::dimColor, KovaMask::DeleteWhenEmpty);
    QObject::connect(sheet, &KovaSheet::finished, sheet, &QObject::deleteLater);
    const auto answer = [window] { press(window, Qt::Key_Return); };
    if (waits) {
        QTimer::singleShot(0, sheet, answer);
        if (sheet->exec() != accepted)
            qFatal("a sheet was not accepted");
        return;
    }
    sheet->showSheet();
    QCoreApplication::processEvents();
    answer();
    QCoreApplication::processEvents();
}

Journey sheets(QWidget *window)
{
    const QString text = QStringLiteral("Do you want to remove the connection to this folder?");
    return {"sheets", 5000, 100, [=](int index) {
                if (index % 4 == 3)
                    answerSheet(new KovaInputSheet(text, window), window, index % 8 == 3);
                else
                    answerSheet(new KovaMessageSheet(KovaMessageSheet::Question, text, window),
                                window, index % 2 == 0);
            }};
}

// Each one leaves its mask, see kova-mask.h.
Journey messages(QWidget *window)
{
    return {"messages in one call", 1000, 4096, [window](int) {
                QTimer::singleShot(0, window, [window] { press(window, Qt::Key_Return); });
                showInfoMsg(QString(), QStringLiteral("The backup is complete."), window);
            }};
}

Journey paths(QWidget *window)
{
    auto *bar = new KovaButtonPath(window);
    bar->setGeometry(0, 100, 500, bar->height());
    bar->show();
    QObject::connect(bar, &KovaButtonPath::sigUpdatePath, bar, &KovaButtonPath::slotUpdatePath);
    return {"path refreshes with clicks", 5000, 100, [bar](int index) {
                QStringList folders;
                for (int depth = 0; depth <= 2 + index % 8; ++depth)
                    folders.append(QStringLiteral("folder %1").arg(index + depth));
                bar->refresh(folders.join(QLatin1Char('/')));
                const int column = bar->columnCount() - 3;
                click(bar->cellWidget(0, column));
                QCoreApplication::processEvents();
                if (bar->columnCount() != column + 1)
                    qFatal("a click did not lead to its folder");
            }};
}

Journey calendars(QWidget *window)
{
    return {"calendars", 2000, 200, [window](int) {
                KovaDateSelector box(QStringLiteral("Choose a date"), window);
                box.move(0, 200);
                box.show();
                box.setFocus();
                box.showPopup();
                const QWidget *popup = box.getCalendarView()->window();
                waitUntil([popup] { return popup->windowHandle()->isExposed(); },
                          "a calendar is seen");
                press(popup, Qt::Key_PageDown);
                press(popup, Qt::Key_Return);
                QCoreApplication::processEvents();
                if (!box.currentData().toDate().isValid() || popup->isVisible())
                    qFatal("a calendar gave no date");
            }};
}

Journey helpWindows()
{
    const QByteArray picture = pngFile(QSize(40, 40));
    writeScratchFile(QStringLiteral("help/enu/page.html"), "<p>offline</p>");
    return {
        "help windows", 1000, 500, [picture](int index) {
            const QString file = QStringLiteral("image/%1.png").arg(index % 50);
            HttpServer server;
            const bool isThere = index % 5 != 4;
            if (isThere)
                server.answer(QStringLiteral("/cgi/knowledgebase/"),
                              QStringLiteral("<html><base href=\"%1x/\"><p>online</p>"
                                             "<img src=\"../%2\">")
                                  .arg(server.base(), file)
                                  .toUtf8());
            server.answer(QLatin1Char('/') + file, picture);
            HelpWindow::setKnowledgeBaseHost(server.base());
            HelpWindow help({QStringLiteral("enu"), scratchFolder() + QLatin1String("/help"),
                             QStringLiteral("page.html"), QString(), QString()},
                            nullptr);
            help.resize(400, 300);
            help.show();
            const auto *browser = help.findChild<HtmlTextBrowser *>();
            const QString expected = isThere ? QStringLiteral("online") : QStringLiteral("offline");
            waitUntil([&] { return browser->toPlainText().contains(expected); },
                      "a help page is shown");
            // Every other window is closed while its picture is still on the way.
            if (isThere && index % 2 == 0)
                waitUntil([&] { return server.requests().size() == 2; }, "a picture is fetched");
        }};
}

// Prints a row of the table; tells whether it is within the bounds.
bool soak(const Journey &journey, int count)
{
    const int warmUp = qMax(100, count / 10);
    for (int i = 0; i < warmUp; ++i)
        journey.once(i);
    const Usage before = Usage::now();
    for (int i = 0; i < count; ++i)
        journey.once(warmUp + i);
    const Usage grown = Usage::now().since(before);

    const int handles = qMax(grown.descriptors, qMax(grown.threads, grown.xResources));
    const double bytes = double(grown.bytes) / count;
    const bool isGood =
        grown.bytes <= journey.mostBytes * count + freeKilobytes * 1024 && handles <= freeHandles;
    std::printf("%-28s %6d %8lld KB %8.0f %7.0f %12d %8d %12d  %s\n", journey.name, count,
                static_cast<long long>(grown.bytes / 1024), bytes, journey.mostBytes,
                grown.descriptors, grown.threads, grown.xResources, isGood ? "ok" : "GROWS");
    std::fflush(stdout);
    return isGood;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_FONT_DPI", "96");
    qputenv("TMPDIR", QFile::encodeName(scratchFolder()));
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Fails if what the library does leaves something behind."));
    parser.addHelpOption();
    const QCommandLineOption part(QStringLiteral("part"),
                                  QStringLiteral("Do only one in <number> of it."),
                                  QStringLiteral("number"), QStringLiteral("1"));
    const QCommandLineOption only(QStringLiteral("only"),
                                  QStringLiteral("Only what has <name> in its name."),
                                  QStringLiteral("name"));
    parser.addOptions({part, only});
    parser.process(application);

    // Qt's cache of pictures would grow to ten megabytes before it forgets any.
    QPixmapCache::setCacheLimit(0);
    setUpHost();
    Window window;
    std::printf("%-28s %6s %11s %8s %7s %12s %8s %12s\n", "", "times", "memory", "bytes", "at most",
                "descriptors", "threads", "X resources");
    bool isGood = true;
    for (const Journey &journey :
         {sheets(&window), messages(&window), paths(&window), calendars(&window), helpWindows()}) {
        if (QLatin1String(journey.name).contains(parser.value(only)))
            isGood &= soak(journey, journey.count / qMax(1, parser.value(part).toInt()));
    }
    return isGood ? 0 : 1;
}
