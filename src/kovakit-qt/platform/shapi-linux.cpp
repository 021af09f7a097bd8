// SPDX-License-Identifier: MIT

#include "shapi-linux.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

// Last, because Xlib's macros (None, Bool, Status ...) take names that Qt uses.
#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <xcb/xcb.h>

namespace {

// The Motif hints of a window. The property holds five items of 32 bits, this record five words of
// 64: xcb_change_property() sends the first twenty bytes of the record as they lie in memory. What
// the record calls functions thus arrives as decorations on a little-endian machine:
//
//   in the record   flags 1        functions 6        decorations 0
//   on the wire     flags 1        functions 0        decorations 6    input mode 0    status 0
//
// Flags of 1 tell the window manager to obey the item functions alone, and functions of 0 forbid
// closing with all the rest. The record stays as wide as it is because window managers have always
// been sent these items; and readHints() fills it byte by byte from the property, so that the items
// of another client are written back as they were.
struct MotifHints
{
    std::uint64_t flags = 0;
    std::uint64_t functions = 1;
    std::uint64_t decorations = 1;
    std::uint64_t inputMode = 0;
    std::uint64_t status = 0;
};

constexpr std::uint32_t wireItems = 5;
// What xcb_get_property() may return at most, in units of four bytes; more than a record takes.
constexpr std::uint32_t readUnits = 20;
constexpr std::uint8_t wireFormat = 32;

struct FreeDeleter
{
    void operator()(void *pointer) const { std::free(pointer); }
};

// A connection of its own keeps these requests out of Qt's event queue. It stays open until the
// next call: requests that are flushed but not yet handled would be lost with it.
Display *openDisplay()
{
    static Display *previous = nullptr;
    if (previous)
        XCloseDisplay(previous);
    // Every round trip delays the sheet. This connection has no use for the keyboard.
    XkbIgnoreExtension(True);
    previous = XOpenDisplay(nullptr);
    XkbIgnoreExtension(False);
    return previous;
}

MotifHints readHints(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t atom)
{
    const auto cookie = xcb_get_property_unchecked(connection, 0, window, atom, atom, 0, readUnits);
    const std::unique_ptr<xcb_get_property_reply_t, FreeDeleter> reply(
        xcb_get_property_reply(connection, cookie, nullptr));

    MotifHints hints;
    if (reply && reply->format == wireFormat && reply->type == atom) {
        // Any client may have set a shorter value; what it lacks reads as zero.
        const auto available = std::size_t(xcb_get_property_value_length(reply.get()));
        hints = {0, 0, 0, 0, 0};
        std::memcpy(&hints, xcb_get_property_value(reply.get()), qMin(sizeof hints, available));
    }
    return hints;
}

} // namespace

void SHAPISetCloseButtonOfWindowEnable(QWidget *widget, bool enable, void **saved)
{
    if (!widget || !saved || QGuiApplication::platformName() != QLatin1String("xcb"))
        return;
    QWindow *handle = widget->window()->windowHandle();
    if (!handle)
        return;
    const auto window = xcb_window_t(handle->winId());

    Display *display = openDisplay();
    if (!display)
        return;
    xcb_connection_t *connection = XGetXCBConnection(display);
    XSetEventQueueOwner(display, XCBOwnsEventQueue);
    // Atoms are the server's, not the connection's.
    static const auto atom = xcb_atom_t(XInternAtom(display, "_MOTIF_WM_HINTS", False));

    MotifHints hints = readHints(connection, window, atom);
    if (!enable) {
        *saved = new MotifHints(hints);
        hints.flags = 1;
        hints.functions = 6;
        hints.decorations = 0;
    } else {
        if (!*saved)
            return;
        const std::unique_ptr<MotifHints> previous(static_cast<MotifHints *>(*saved));
        *saved = nullptr;
        hints = *previous;
    }
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom, atom, wireFormat,
                        wireItems, &hints);
    xcb_flush(connection);
}
