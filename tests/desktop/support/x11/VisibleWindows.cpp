#include "desktop/support/x11/VisibleWindows.h"

namespace brindlecam::desktop {

namespace {

std::vector<xcb_window_t> childrenOfRoot(const Connection& connection)
{
    const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        connection.raw(), xcb_query_tree(connection.raw(), connection.root()), nullptr));
    if (!tree)
        return {};
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    return {children, children + xcb_query_tree_children_length(tree.get())};
}

QString titleOf(const Connection& connection, xcb_window_t window)
{
    constexpr std::uint32_t kMostWords = 1024;
    const auto cookie = xcb_get_property(
        connection.raw(), 0, window, connection.atom("_NET_WM_NAME"), XCB_ATOM_ANY, 0, kMostWords);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection.raw(), cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(reply.get())),
                             xcb_get_property_value_length(reply.get()));
}

} // namespace

std::vector<VisibleWindow> visibleWindows(const Connection& connection)
{
    std::vector<VisibleWindow> windows;
    for (const xcb_window_t window : childrenOfRoot(connection)) {
        const auto attributesCookie = xcb_get_window_attributes(connection.raw(), window);
        const auto geometryCookie = xcb_get_geometry(connection.raw(), window);
        const Owned<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection.raw(), attributesCookie, nullptr));
        const Owned<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(connection.raw(), geometryCookie, nullptr));
        if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
            continue;
        const auto pid = connection.property32(window, "_NET_WM_PID");
        windows.push_back({window,
                           QRect(geometry->x, geometry->y, geometry->width, geometry->height),
                           titleOf(connection, window), pid.empty() ? 0 : pid.front()});
    }
    return windows;
}

xcb_window_t focusedWindow(const Connection& connection)
{
    const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        connection.raw(), xcb_get_input_focus(connection.raw()), nullptr));
    return reply ? reply->focus : 0;
}

} // namespace brindlecam::desktop
