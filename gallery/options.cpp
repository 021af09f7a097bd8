// SPDX-License-Identifier: MIT

#include "options.h"

#include "languages.h"
#include "page-registry.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QSet>

#include <vector>

namespace {

constexpr double smallestScale = 0.5;
constexpr double largestScale = 4;

QStringList pageNames()
{
    QStringList names;
    for (const PageEntry &entry : pageRegistry())
        names.append(entry.name);
    return names;
}

// How many arguments, itself included, the option of Qt at @p argument takes; 0 if it is none of
// them. Qt does not tell which ones it knows before it takes them out of main()'s arguments, and
// then the scale is measured already.
int qtOptionLength(const QString &argument)
{
    static const QSet<QString> switches = {QStringLiteral("reverse"), QStringLiteral("nograb"),
                                           QStringLiteral("dograb"), QStringLiteral("sync"),
                                           QStringLiteral("widgetcount")};
    static const QSet<QString> withValue = {
        QStringLiteral("style"),         QStringLiteral("stylesheet"),
        QStringLiteral("platform"),      QStringLiteral("platformpluginpath"),
        QStringLiteral("platformtheme"), QStringLiteral("plugin"),
        QStringLiteral("display"),       QStringLiteral("name"),
        QStringLiteral("title"),         QStringLiteral("icon"),
        QStringLiteral("geometry"),      QStringLiteral("qwindowtitle"),
        QStringLiteral("qwindowicon"),   QStringLiteral("qwindowgeometry"),
        QStringLiteral("session")};
    if (!argument.startsWith(QLatin1Char('-')))
        return 0;
    const QString name = argument.mid(argument.startsWith(QLatin1String("--")) ? 2 : 1);
    if (switches.contains(name) || name.startsWith(QLatin1String("style="))
        || name.startsWith(QLatin1String("stylesheet=")))
        return 1;
    return withValue.contains(name) ? 2 : 0;
}

// Takes Qt's options out of @p arguments and returns them.
QStringList takeQtOptions(QStringList *arguments)
{
    QStringList taken;
    QStringList left;
    while (!arguments->isEmpty()) {
        const int length = left.isEmpty() ? 0 : qtOptionLength(arguments->constFirst());
        for (int i = 0; i < qMax(1, length) && !arguments->isEmpty(); ++i)
            (length > 0 ? taken : left).append(arguments->takeFirst());
    }
    *arguments = left;
    return taken;
}

QString checkScale(const QString &text, double *scale)
{
    bool ok = false;
    *scale = text.toDouble(&ok);
    if (ok && *scale >= smallestScale && *scale <= largestScale)
        return QString();
    return QStringLiteral("--scale takes a number from %1 to %2, not \"%3\".")
        .arg(smallestScale)
        .arg(largestScale)
        .arg(text);
}

} // namespace

QString parseOptions(const QStringList &given, GalleryOptions *options)
{
    QStringList arguments = given;
    options->qtOptions = takeQtOptions(&arguments);
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const auto withValue = [](const char *name) {
        return QCommandLineOption(QString::fromLatin1(name), QString(), QStringLiteral("value"));
    };
    const QCommandLineOption scale = withValue("scale");
    const QCommandLineOption language = withValue("lang");
    const QCommandLineOption theme = withValue("theme");
    const QCommandLineOption page = withValue("page");
    const QCommandLineOption screenshots = withValue("screenshots");

    QCommandLineParser parser;
    parser.addOptions({help, scale, language, theme, page, screenshots});
    if (!parser.parse(arguments))
        return parser.errorText();
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("Unexpected argument \"%1\".").arg(parser.positionalArguments()[0]);
    for (const QCommandLineOption &option : {language, theme, page, screenshots}) {
        if (parser.isSet(option) && parser.value(option).isEmpty())
            return QStringLiteral("--%1 needs a value.").arg(option.names().constFirst());
    }

    options->help = parser.isSet(help);
    options->language = parser.value(language);
    options->theme = parser.value(theme);
    options->page = parser.value(page);
    options->screenshots = parser.value(screenshots);
    if (!options->page.isEmpty() && !pageNames().contains(options->page)) {
        return QStringLiteral("There is no page \"%1\". The pages are: %2.")
            .arg(options->page, pageNames().join(QLatin1String(", ")));
    }
    if (parser.isSet(scale))
        return checkScale(parser.value(scale), &options->scale);
    return QString();
}

QString helpText()
{
    return QStringLiteral("Usage: kovakit-gallery [options]\n"
                          "Shows every widget of the library, a page for each topic.\n"
                          "\n"
                          "  --scale FACTOR     display scale, from %1 to %2; the desktop's own if "
                          "not given\n"
                          "  --lang CODE        language of the library's own words; the "
                          "system's if not given\n"
                          "  --theme DIR        resource folder to use in place of the house "
                          "theme\n"
                          "  --page NAME        page to open first\n"
                          "  --screenshots DIR  write a picture of every page, or of the one given "
                          "with --page, and\n"
                          "                     of all that opens over it, then quit; needs no "
                          "display\n"
                          "  --help             this text\n"
                          "\n"
                          "Options of Qt, such as -reverse, -style NAME and -platform NAME, are "
                          "understood too.\n"
                          "\n"
                          "Pages: %3.\n"
                          "Languages: %4.\n")
        .arg(smallestScale)
        .arg(largestScale)
        .arg(pageNames().join(QLatin1String(", ")), languageCodes().join(QLatin1String(", ")));
}
