#pragma once

#include "platform/x11/connection/X11.h"

#include <xcb/xcb.h>

namespace brindlecam::x11 {

class PatientConnection;

/// Whom to ask about a root window, and how answers are awaited there. On its connection's thread.
struct RootAccess {
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = XCB_WINDOW_NONE;
    PatientConnection* patient = nullptr; ///< by whose rules; null: Qt's connection, without limit

    /// Qt's connection. Main thread.
    [[nodiscard]] static RootAccess onQtsConnection();

    /// As xcb_wait_for_reply does it: null when the server refuses or is gone.
    [[nodiscard]] void* awaitReply(unsigned int sequence, xcb_generic_error_t** error) const;

    template <typename Reply>
    [[nodiscard]] Owned<Reply> reply(unsigned int sequence) const
    {
        return Owned<Reply>(static_cast<Reply*>(awaitReply(sequence, nullptr)));
    }
};

} // namespace brindlecam::x11
