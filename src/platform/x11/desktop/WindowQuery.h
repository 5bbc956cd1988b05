#pragma once

#include "platform/WindowList.h"

#include <xcb/xcb.h>

namespace brindlecam {

/// The questions about one window that are on their way to the X server. Making it sends them,
/// receive() waits for the answers; many together cost one round trip. Main thread.
class WindowQuery final {
public:
    /// Looks up what queries need; once before the first.
    static void internAtoms();

    explicit WindowQuery(xcb_window_t window);
    /// Answers that nobody took are dropped.
    ~WindowQuery();
    WindowQuery(WindowQuery&& other) noexcept;
    WindowQuery& operator=(WindowQuery&&) = delete;

    /// The window, or nothing when it is gone, not on the screen, or on another desktop than
    /// `currentDesktop`. Once.
    [[nodiscard]] std::optional<WindowEntry> receive(std::optional<std::uint32_t> currentDesktop);

private:
    xcb_get_window_attributes_cookie_t m_attributes;
    xcb_get_geometry_cookie_t m_geometry;
    xcb_translate_coordinates_cookie_t m_origin;
    xcb_get_property_cookie_t m_type;
    xcb_get_property_cookie_t m_state;
    xcb_get_property_cookie_t m_desktop;
    xcb_get_property_cookie_t m_opacity;
    xcb_get_property_cookie_t m_pid;
    xcb_get_property_cookie_t m_frame;
    xcb_get_property_cookie_t m_shadow;
    bool m_pending = true;
};

} // namespace brindlecam
