#pragma once

#include "desktop/support/x11/Connection.h"

#include <QRect>

namespace brindlecam::desktop {

/// The inside of a window, in pixels of the whole screen; empty when it is gone.
[[nodiscard]] inline QRect insideOf(const Connection& connection, xcb_window_t window)
{
    const auto geometryCookie = xcb_get_geometry(connection.raw(), window);
    const auto originCookie =
        xcb_translate_coordinates(connection.raw(), window, connection.root(), 0, 0);
    const Owned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection.raw(), geometryCookie, nullptr));
    const Owned<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(connection.raw(), originCookie, nullptr));
    if (!geometry || !origin)
        return {};
    return {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

} // namespace brindlecam::desktop
