#pragma once

#include <xcb/xcb.h>

namespace brindlecam::x11 {

/// The server's time now, asked over a short connection of its own, because Qt's time may be older
/// than another window's; XCB_CURRENT_TIME when the server can't be reached. About a millisecond.
[[nodiscard]] xcb_timestamp_t serverTime();

} // namespace brindlecam::x11
