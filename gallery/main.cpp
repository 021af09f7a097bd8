// SPDX-License-Identifier: MIT

#include "environment.h"
#include "gallery-window.h"
#include "host-startup.h"
#include "languages.h"
#include "options.h"
#include "screenshots.h"
#include "words.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/kova-locale.h>

#include <QApplication>
#include <QColor>
#include <QCoreApplication>
#include <QFont>
#include <QLocale>
#include <QPalette>
#include <QScreen>
#include <QTemporaryDir>

#ifdef GALLERY_IS_SINGLE
#include <kovakit-qt/single-application/qtsingleapplication.h>
#endif

#include <clocale>
#include <cstdio>

namespace {

constexpr int failed = 1;
constexpr int badUsage = 2;

int complain(const QString &text, int exitCode)
{
    std::fprintf(stderr, "kovakit-gallery: %s\n", qPrintable(text));
    return exitCode;
}

// The desktop's family, at the size for which the theme is drawn, and links in its accent colour,
// which style sheets cannot give.
void chooseTypography()
{
    QFont font = QApplication::font();
    font.setPixelSize(kovaPx(13));
    QApplication::setFont(font);
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Link, QColor(0x16, 0x70, 0xB0));
    palette.setColor(QPalette::LinkVisited, QColor(0x16, 0x70, 0xB0));
    QApplication::setPalette(palette);
}

int runScreenshots(GalleryWindow *window, const GalleryOptions &options)
{
    const QString error = takeScreenshots(window, options.screenshots, options.page);
    if (!error.isEmpty())
        return complain(error, failed);
    std::printf("The pictures are in %s\n", qPrintable(options.screenshots));
    return 0;
}

#ifdef GALLERY_IS_SINGLE
using Application = QtSingleApplication;

// Whether a gallery that runs already has raised its window and shows the page that is asked for.
bool isShownElsewhere(QtSingleApplication &app, const GalleryOptions &options)
{
    return options.screenshots.isEmpty() && app.isRunning() && app.sendMessage(options.page);
}

void listenToOthers(QtSingleApplication &app, GalleryWindow *window)
{
    app.setActivationWindow(window);
    QObject::connect(&app, &QtSingleApplication::messageReceived, window,
                     &GalleryWindow::showPageNamed);
}
#else
class Application : public QApplication
{
public:
    Application(const QString &, int &argc, char **argv)
        : QApplication(argc, argv)
    {
    }
};

bool isShownElsewhere(QApplication &, const GalleryOptions &)
{
    return false;
}

void listenToOthers(QApplication &, GalleryWindow *) { }
#endif

int runWindow(GalleryWindow *window)
{
    window->resize(
        GalleryWindow::designSize().boundedTo(QApplication::primaryScreen()->availableSize()));
    window->show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    std::setlocale(LC_ALL, "");
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));

    GalleryOptions options;
    const QString mistake = parseOptions(arguments, &options);
    if (!mistake.isEmpty())
        return complain(mistake + QLatin1String("\nTry --help."), badUsage);
    if (options.help) {
        std::fputs(qPrintable(helpText()), stdout);
        return 0;
    }
    ensureEnvironment(options, argv);
    if (!hasDisplay(options)) {
        return complain(QStringLiteral("There is no display to open a window on (DISPLAY is not "
                                       "set). Use --screenshots DIR to get pictures instead."),
                        failed);
    }

    Application app(instanceName(options), argc, argv);
    app.setApplicationName(QStringLiteral("kovakit-gallery"));
    if (isShownElsewhere(app, options))
        return 0;
    const QString language = options.language.isEmpty()
                               ? KovaLocale::getInstance()->getDefaultLanguage()
                               : options.language;
    QLocale::setDefault(QLocale(localeName(language)));
    chooseTypography();

    // A folder of its own: galleries with different scales may run side by side.
    const QTemporaryDir userData;
    HostSettings settings;
    settings.themeFolder = options.theme.isEmpty() ? houseThemeFolder() : options.theme;
    settings.userDataFolder = userData.path();
    settings.language = language;
    settings.styleFiles = QStringList{QStringLiteral(":/gallery/gallery.qss")};
    if (settings.themeFolder.isEmpty()) {
        return complain(QStringLiteral("The house theme is not where it should be beside the "
                                       "program. Use --theme DIR."),
                        failed);
    }
    const QString obstacle = startUpHost(settings);
    if (!obstacle.isEmpty())
        return complain(obstacle, badUsage);

    GalleryWords words(hostLanguage());
    QCoreApplication::installTranslator(&words);
    GalleryWindow window(language);
    window.showPageNamed(options.page);
    if (options.screenshots.isEmpty())
        listenToOthers(app, &window);
    return options.screenshots.isEmpty() ? runWindow(&window) : runScreenshots(&window, options);
}
