// SPDX-License-Identifier: MIT

#include "x11-window.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <memory>

namespace {

using Connection = std::unique_ptr<Display, int (*)(Display *)>;

Connection connectToDisplay()
{
    return Connection(XOpenDisplay(nullptr), XCloseDisplay);
}

} // namespace

QVector<quint32> readMotifHints(WId window)
{
    const Connection display = connectToDisplay();
    const Atom atom = XInternAtom(display.get(), "_MOTIF_WM_HINTS", False);
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char *value = nullptr;
    XGetWindowProperty(display.get(), window, atom, 0, 64, False, atom, &type, &format, &count,
                       &rest, &value);
    QVector<quint32> items;
    // Xlib hands items of 32 bits out as longs.
    for (unsigned long i = 0; i < count; ++i)
        items.append(quint32(reinterpret_cast<const long *>(value)[i]));
    if (value)
        XFree(value);
    return items;
}

void writeMotifHints(WId window, const QVector<quint32> &items)
{
    const Connection display = connectToDisplay();
    const Atom atom = XInternAtom(display.get(), "_MOTIF_WM_HINTS", False);
    if (items.isEmpty()) {
        XDeleteProperty(display.get(), window, atom);
        return;
    }
    QVector<long> words;
    for (const quint32 item : items)
        words.append(long(item));
    XChangeProperty(display.get(), window, atom, atom, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char *>(words.constData()), words.size());
}
