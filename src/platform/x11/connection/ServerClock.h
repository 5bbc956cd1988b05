#pragma once

#include "platform/x11/connection/X11.h"

#include <xcb/xcb.h>

namespace brindlecam::x11 {

/// The server's time, asked over a connection of its own: Qt's time may be older than another
/// window's. One thread.
class ServerClock final {
public:
    ServerClock();

    /// The time now, after a round trip of some tenths of a millisecond. XCB_CURRENT_TIME when the
    /// server does not answer soon: while another client has it for itself nobody is told anything.
    [[nodiscard]] xcb_timestamp_t now();

private:
    void connect();

    OwnConnection m_connection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

} // namespace brindlecam::x11
