#include "platform/x11/connection/X11Windows.h"

#include "platform/x11/connection/X11.h"

#include <xcb/shape.h>

#include <array>

namespace brindlecam::x11 {

namespace {

xcb_map_state_t mapState(xcb_window_t window)
{
    const Owned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window), nullptr));
    return reply ? static_cast<xcb_map_state_t>(reply->map_state) : XCB_MAP_STATE_UNMAPPED;
}

} // namespace

ClientIds ClientIds::of(xcb_connection_t* connection)
{
    const xcb_setup_t& setup = *xcb_get_setup(connection);
    return {setup.resource_id_base, setup.resource_id_mask};
}

bool isOurs(xcb_window_t window)
{
    return ClientIds::of(connection()).has(window);
}

bool isMapped(xcb_window_t window)
{
    return mapState(window) != XCB_MAP_STATE_UNMAPPED;
}

bool isViewable(xcb_window_t window)
{
    return mapState(window) == XCB_MAP_STATE_VIEWABLE;
}

std::optional<QRect> rectOnRoot(xcb_window_t window)
{
    const auto sizeCookie = xcb_get_geometry(connection(), window);
    const auto placeCookie = xcb_translate_coordinates(connection(), window, root(), 0, 0);
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection(), sizeCookie, nullptr));
    const Owned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection(), placeCookie, nullptr));
    if (!size || !place)
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

std::optional<QPoint> pointer()
{
    const Owned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection(), xcb_query_pointer(connection(), root()), nullptr));
    if (!reply || !reply->same_screen)
        return {};
    return QPoint(reply->root_x, reply->root_y);
}

void configure(xcb_window_t window, const QRect& rect)
{
    const std::array<std::int32_t, 4> values{rect.x(), rect.y(), rect.width(), rect.height()};
    xcb_configure_window(connection(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
}

void raise(xcb_window_t window)
{
    constexpr std::uint32_t kAbove = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection(), window, XCB_CONFIG_WINDOW_STACK_MODE, &kAbove);
}

void lowerBelow(xcb_window_t window, xcb_window_t other)
{
    const std::array<std::uint32_t, 2> values{other, XCB_STACK_MODE_BELOW};
    const auto cookie = xcb_configure_window_checked(
        connection(), window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
        values.data());
    xcb_discard_reply(connection(), cookie.sequence);
    xcb_flush(connection());
}

xcb_window_t childOfRoot(xcb_window_t window)
{
    for (;;) {
        const Owned<xcb_query_tree_reply_t> reply(
            xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr));
        if (!reply || reply->parent == XCB_WINDOW_NONE)
            return XCB_WINDOW_NONE;
        if (reply->parent == reply->root)
            return window;
        window = reply->parent;
    }
}

void setShape(xcb_window_t window, const QRegion& pixels)
{
    if (pixels.isEmpty()) {
        xcb_shape_mask(connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0,
                       XCB_PIXMAP_NONE);
        return;
    }
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect& rect : pixels) {
        rectangles.push_back(
            {static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
             static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(rect.height())});
    }
    xcb_shape_rectangles(connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_YX_BANDED, window, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

bool setFocus(xcb_window_t window)
{
    // With the current time, not an event's: after a command from outside there is no event, and
    // an older one would be refused without a word.
    const auto cookie = xcb_set_input_focus_checked(connection(), XCB_INPUT_FOCUS_POINTER_ROOT,
                                                    window, XCB_CURRENT_TIME);
    const Owned<xcb_generic_error_t> error(xcb_request_check(connection(), cookie));
    return !error;
}

namespace {

constexpr std::uint32_t kFromPager = 2;

void askWindowManager(xcb_window_t window, const char* what, std::array<std::uint32_t, 2> values)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(what);
    message.data.data32[0] = values[0];
    message.data.data32[1] = values[1];
    xcb_send_event(connection(), 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection());
}

} // namespace

void activate(xcb_window_t window, xcb_timestamp_t time)
{
    askWindowManager(window, "_NET_ACTIVE_WINDOW", {kFromPager, time});
}

bool isPutAway(xcb_window_t window)
{
    constexpr std::uint32_t kIconic = 3;
    const auto state = property32(window, atom("WM_STATE"), atom("WM_STATE"));
    if (!state.empty() && state.front() == kIconic)
        return true;
    constexpr std::uint32_t kEveryDesktop = 0xffffffff;
    const auto desktop = property32(window, atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL);
    return !desktop.empty() && desktop.front() != kEveryDesktop &&
           desktop != property32(root(), atom("_NET_CURRENT_DESKTOP"), XCB_ATOM_CARDINAL);
}

void moveToThisDesktop(xcb_window_t window)
{
    const auto shown = property32(root(), atom("_NET_CURRENT_DESKTOP"), XCB_ATOM_CARDINAL);
    if (!shown.empty())
        askWindowManager(window, "_NET_WM_DESKTOP", {shown.front(), kFromPager});
}

void setProperty32(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                   const std::vector<std::uint32_t>& values)
{
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

} // namespace brindlecam::x11
