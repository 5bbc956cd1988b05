#pragma once

#include "platform/x11/connection/X11.h"

#include <xcb/xcb.h>

#include <functional>

namespace brindlecam::x11 {

/// Whom to ask about a root window, and how answers are awaited there. On its connection's thread.
struct RootAccess {
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = XCB_WINDOW_NONE;
    /// As xcb_wait_for_reply does it: null when the server refuses or is gone.
    std::function<void*(unsigned int sequence, xcb_generic_error_t** error)> awaitReply;

    /// Qt's connection. Main thread.
    [[nodiscard]] static RootAccess onQtsConnection();

    template <typename Reply>
    [[nodiscard]] Owned<Reply> reply(unsigned int sequence) const
    {
        return Owned<Reply>(static_cast<Reply*>(awaitReply(sequence, nullptr)));
    }
};

} // namespace brindlecam::x11
