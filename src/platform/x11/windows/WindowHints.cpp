#include "platform/x11/windows/WindowHints.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"

#include <cstdint>
#include <vector>

namespace brindlecam::x11 {

void setHints(xcb_window_t window, const PanelTraits& traits)
{
    constexpr std::uint32_t kNeverUnredirect = 2;
    constexpr std::uint32_t kEveryDesktop = 0xffffffff;
    // Not by Qt's attributes: beside the type they list KDE's "override" (frameless) and NORMAL.
    setProperty32(window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, {atom(traits.type)});
    if (traits.framed)
        return;
    setProperty32(window, atom("_NET_WM_BYPASS_COMPOSITOR"), XCB_ATOM_CARDINAL, {kNeverUnredirect});
    setProperty32(window, atom("_COMPTON_SHADOW"), XCB_ATOM_CARDINAL, {0});
    if (traits.everywhere && !isViewable(window)) {
        setProperty32(window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM,
                      {atom("_NET_WM_STATE_ABOVE"), atom("_NET_WM_STATE_STICKY"),
                       atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")});
        setProperty32(window, atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, {kEveryDesktop});
    }
}

void setUserTime(xcb_window_t window, xcb_timestamp_t time)
{
    if (time == XCB_CURRENT_TIME)
        return;
    const auto property = atom("_NET_WM_USER_TIME");
    setProperty32(window, property, XCB_ATOM_CARDINAL, {time});
    const auto timeWindow = property32(window, atom("_NET_WM_USER_TIME_WINDOW"), XCB_ATOM_WINDOW);
    if (!timeWindow.empty())
        setProperty32(timeWindow.front(), property, XCB_ATOM_CARDINAL, {time});
}

void setSizeHints(xcb_window_t window)
{
    // From scale 1.5 on Qt (6.4 and 6.11) makes sizes go in steps of a point, which is two pixels:
    // QPlatformWindow::windowSizeIncrement. Drop it when only windows that want steps have them.
    constexpr std::uint32_t kUserPlaceAndSize = 1 | 2;
    constexpr std::uint32_t kHasGravity = 512;
    constexpr std::size_t kGravityIndex = 17;
    std::vector<std::uint32_t> hints(kGravityIndex + 1);
    hints.front() = kUserPlaceAndSize | kHasGravity;
    hints[kGravityIndex] = XCB_GRAVITY_STATIC;
    setProperty32(window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
}

} // namespace brindlecam::x11
