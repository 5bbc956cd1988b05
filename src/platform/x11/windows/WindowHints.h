#pragma once

#include "platform/x11/windows/PanelTraits.h"

#include <xcb/xcb.h>

namespace brindlecam::x11 {

/// What our windows tell the window manager and the compositor of themselves. Main thread.

/// What the window is. Before it is mapped: some of it is read then only.
void setHints(xcb_window_t window, const PanelTraits& traits);
/// When the user asked for the window, over what Qt has written; nothing for XCB_CURRENT_TIME.
void setUserTime(xcb_window_t window, xcb_timestamp_t time);
/// That place and size are the user's own, in single pixels.
void setSizeHints(xcb_window_t window);

} // namespace brindlecam::x11
