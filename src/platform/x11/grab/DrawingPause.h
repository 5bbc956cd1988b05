#pragma once

#include <xcb/xcb.h>

namespace brindlecam {

/// Nobody else may draw while it lasts: what is read meanwhile is of one moment. On its
/// connection's thread.
class DrawingPause final {
public:
    explicit DrawingPause(xcb_connection_t* connection);
    /// Lets the others draw again, whatever happened, and waits for nothing.
    ~DrawingPause();
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

    /// Lets the others draw again once the server is through with what was asked for so far.
    void end();

private:
    xcb_connection_t* const m_connection;
    bool m_lasts = true;
};

} // namespace brindlecam
