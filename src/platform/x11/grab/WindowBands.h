#pragma once

#include "platform/x11/grab/BandRing.h"

#include <xcb/xcb.h>

#include <deque>

namespace brindlecam {

class PixelBuffer;

/// Bands of a picture as wide as a window, which the server reads from shared memory and puts into
/// it. Main thread; pixels of the window.
class WindowBands final : public BandPeer {
public:
    /// The ring holds the bands; the window has the root window's depth.
    WindowBands(const PixelBuffer& ring, xcb_window_t window, int width);
    ~WindowBands() override;
    WindowBands(const WindowBands&) = delete;
    WindowBands& operator=(const WindowBands&) = delete;

    void ask(const Band& band) override;
    void send() override;
    [[nodiscard]] bool await() override;

private:
    struct Request {
        xcb_void_cookie_t put;
        xcb_get_input_focus_cookie_t after; ///< answered once the server is through with it
    };

    const PixelBuffer& m_ring;
    const xcb_window_t m_window;
    const int m_width;
    const xcb_gcontext_t m_context;
    std::deque<Request> m_underWay;
};

} // namespace brindlecam
