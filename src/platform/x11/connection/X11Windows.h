#pragma once

#include <QPoint>
#include <QRect>
#include <QRegion>

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace brindlecam::x11 {

/// Small requests about one window, ours or not. Main thread; sizes are native pixels.

/// The numbers of what one client makes.
struct ClientIds {
    std::uint32_t base = 0;
    std::uint32_t mask = 0;

    /// Any thread.
    [[nodiscard]] static ClientIds of(xcb_connection_t* connection);
    [[nodiscard]] bool has(std::uint32_t id) const { return (id & ~mask) == base; }
};

/// Whether a client of this connection made the window.
[[nodiscard]] bool isOurs(xcb_window_t window);
/// Whether the window itself is mapped now, its parents or not; false when it is gone.
[[nodiscard]] bool isMapped(xcb_window_t window);
/// Whether the window and all its parents are mapped now; false when it is gone.
[[nodiscard]] bool isViewable(xcb_window_t window);
/// Where the window lies on the root window now, without its border; none when it is gone.
[[nodiscard]] std::optional<QRect> rectOnRoot(xcb_window_t window);

/// Where the pointer is on the root window now; none while it is on another screen of the server.
[[nodiscard]] std::optional<QPoint> pointer();

/// Moves and resizes the window.
void configure(xcb_window_t window, const QRect& rect);
void raise(xcb_window_t window);
/// Both are children of the root. Does nothing when one of them is gone.
void lowerBelow(xcb_window_t window, xcb_window_t other);
/// The window itself, or that of its parents which lies directly on the root: a window manager's
/// frame. XCB_WINDOW_NONE when it is gone.
[[nodiscard]] xcb_window_t childOfRoot(xcb_window_t window);
/// Cuts the window to these pixels of its own; an empty region gives it back all of them.
void setShape(xcb_window_t window, const QRegion& pixels);

/// Gives the keyboard focus to a window, or to XCB_INPUT_FOCUS_POINTER_ROOT. False when it can't
/// have it because it is gone or not viewable.
bool setFocus(xcb_window_t window);

/// Asks the window manager to activate a window as if the user had chosen it in a task list.
void activate(xcb_window_t window, xcb_timestamp_t time);

/// Whether its window manager keeps it out of sight for now: minimised, or on another desktop.
[[nodiscard]] bool isPutAway(xcb_window_t window);
/// Asks the window manager to move a window to the desktop that is shown.
void moveToThisDesktop(xcb_window_t window);

/// Replaces a property of 32-bit items.
void setProperty32(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                   const std::vector<std::uint32_t>& values);

} // namespace brindlecam::x11
