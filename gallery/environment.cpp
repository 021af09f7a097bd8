// SPDX-License-Identifier: MIT

#include "environment.h"

#include "languages.h"
#include "options.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstdio>
#include <unistd.h>

namespace {

// Returns whether the variable had to be changed.
bool setVariable(const char *name, const QByteArray &value)
{
    if (qgetenv(name) == value)
        return false;
    return qputenv(name, value);
}

bool removeVariable(const char *name)
{
    return qEnvironmentVariableIsSet(name) && qunsetenv(name);
}

bool chooseScale(double scale)
{
    // Qt's own scaling would multiply ours.
    bool changed = false;
    for (const char *name :
         {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_AUTO_SCREEN_SCALE_FACTOR",
          "QT_ENABLE_HIGHDPI_SCALING", "QT_DEVICE_PIXEL_RATIO"})
        changed |= removeVariable(name);
    return setVariable("QT_FONT_DPI", QByteArray::number(qRound(96 * scale))) || changed;
}

// The same Han letters look different in Japanese and in both kinds of Chinese: this decides which
// font stands in for a family that has none of them.
bool chooseFonts(const QString &locale)
{
    return setVariable(
        "FC_LANG",
        QString(locale).replace(QLatin1Char('_'), QLatin1Char('-')).toLower().toLatin1());
}

} // namespace

void ensureEnvironment(const GalleryOptions &options, char **argv)
{
    bool changed = false;
    if (options.scale > 0)
        changed |= chooseScale(options.scale);
    const QString locale = localeName(options.language);
    if (!locale.isEmpty())
        changed |= chooseFonts(locale);
    // Pictures must not depend on where a window manager puts windows and where the pointer is.
    if (!options.screenshots.isEmpty() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        changed |= setVariable("QT_QPA_PLATFORM", "offscreen");
    if (!changed)
        return;
    execv("/proc/self/exe", argv);
    std::perror("kovakit-gallery: cannot start anew with the chosen scale and language");
}

bool hasDisplay(const GalleryOptions &options)
{
    for (const char *name : {"-platform", "-display"}) {
        if (options.qtOptions.contains(QLatin1String(name))
            || options.qtOptions.contains(QLatin1Char('-') + QLatin1String(name)))
            return true;
    }
    return !qEnvironmentVariableIsEmpty("DISPLAY")
        || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

QString instanceName(const GalleryOptions &options)
{
    QStringList parts = {QStringLiteral("kovakit-gallery"), QString::number(options.scale),
                         options.language, options.theme};
    // Under Wayland, DISPLAY is that of the X server for old programs, or empty.
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR", "QT_QPA_PLATFORM"})
        parts.append(qEnvironmentVariable(name));
    return (parts + options.qtOptions).join(QLatin1Char('\n'));
}
