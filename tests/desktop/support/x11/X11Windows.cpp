#include "desktop/support/x11/X11Windows.h"

#include "desktop/support/x11/X11Geometry.h"

#include <xcb/shape.h>

#include <algorithm>

namespace brindlecam::desktop {

namespace {

constexpr std::uint8_t kDepthWithAlpha = 32;
constexpr std::uint32_t kMostWords = 1024; // of a property

using Property = Owned<xcb_get_property_reply_t>;

/// 0 where there is none.
std::uint32_t firstNumber(const Property& property)
{
    if (!property || property->format != 32 || xcb_get_property_value_length(property.get()) < 4)
        return 0;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(property.get()));
}

QString textOf(const Property& property)
{
    if (!property || property->format != 8)
        return {};
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(property.get())),
                             xcb_get_property_value_length(property.get()));
}

Role role(const QByteArray& kind, bool managed)
{
    if (kind == "_NET_WM_WINDOW_TYPE_DOCK")
        return Role::overlay;
    if (kind == "_NET_WM_WINDOW_TYPE_NOTIFICATION")
        return Role::toast;
    if (kind == "_NET_WM_WINDOW_TYPE_DIALOG")
        return Role::dialog;
    if (kind == "_NET_WM_WINDOW_TYPE_UTILITY")
        return Role::pin;
    // What Qt shows as a menu names no kind of its own.
    return !managed && kind == "_NET_WM_WINDOW_TYPE_NORMAL" ? Role::menu : Role::other;
}

} // namespace

X11Windows::X11Windows(const QString& display)
    : m_connection(display)
{
}

std::vector<SeenWindow> X11Windows::shown(qint64 pid) const
{
    std::vector<SeenWindow> found;
    collect(m_connection.root(), pid, found);
    return found;
}

std::vector<SeenWindow> X11Windows::all() const
{
    std::vector<SeenWindow> windows;
    for (const xcb_window_t window : children(m_connection.root())) {
        if (const auto shown = seen(window))
            windows.push_back(*shown);
    }
    return windows;
}

bool X11Windows::exists(qint64 pid, const QRect& pixels) const
{
    return std::ranges::any_of(children(m_connection.root()), [&](xcb_window_t window) {
        return this->pid(window) == pid && insideOf(m_connection, window).contains(pixels);
    });
}

WindowId X11Windows::focused() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        m_connection.raw(), xcb_get_input_focus(m_connection.raw()), nullptr));
    return reply ? reply->focus : 0;
}

bool X11Windows::hasKeyboard(qint64 pid) const
{
    const auto window = static_cast<xcb_window_t>(focused());
    return window > XCB_INPUT_FOCUS_POINTER_ROOT && this->pid(window) == pid;
}

WindowId X11Windows::active() const
{
    const auto active = m_connection.property32(m_connection.root(), "_NET_ACTIVE_WINDOW");
    return active.empty() ? 0 : active.front();
}

std::vector<xcb_window_t> X11Windows::children(xcb_window_t parent) const
{
    const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        m_connection.raw(), xcb_query_tree(m_connection.raw(), parent), nullptr));
    if (!tree)
        return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

void X11Windows::collect(xcb_window_t parent, qint64 pid, std::vector<SeenWindow>& found) const
{
    for (const xcb_window_t window : children(parent)) {
        const auto shown = seen(window);
        if (!shown)
            continue;
        if (shown->pid == pid)
            found.push_back(*shown);
        else
            collect(window, pid, found);
    }
}

// All questions go off before the first answer is taken: tests look often, at many windows.
std::optional<SeenWindow> X11Windows::seen(xcb_window_t window) const
{
    xcb_connection_t* const connection = m_connection.raw();
    const auto property = [&](const QByteArray& name) {
        return xcb_get_property(connection, 0, window, m_connection.atom(name), XCB_ATOM_ANY, 0,
                                kMostWords);
    };
    const auto attributesCookie = xcb_get_window_attributes(connection, window);
    const auto geometryCookie = xcb_get_geometry(connection, window);
    const auto originCookie =
        xcb_translate_coordinates(connection, window, m_connection.root(), 0, 0);
    const auto kindsCookie = property("_NET_WM_WINDOW_TYPE");
    const auto titleCookie = property("_NET_WM_NAME");
    const auto pidCookie = property("_NET_WM_PID");
    const auto shapeCookie = xcb_shape_query_extents(connection, window);
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, attributesCookie, nullptr));
    const Owned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, geometryCookie, nullptr));
    const Owned<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(connection, originCookie, nullptr));
    const Property kinds(xcb_get_property_reply(connection, kindsCookie, nullptr));
    const Property title(xcb_get_property_reply(connection, titleCookie, nullptr));
    const Property pid(xcb_get_property_reply(connection, pidCookie, nullptr));
    const Owned<xcb_shape_query_extents_reply_t> shape(
        xcb_shape_query_extents_reply(connection, shapeCookie, nullptr));
    if (!attributes || !geometry || !origin || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
        return std::nullopt;
    const bool managed = attributes->override_redirect == 0;
    const xcb_atom_t kind = firstNumber(kinds);
    return SeenWindow{
        .id = window,
        .pixels = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height),
        .role = kind == XCB_ATOM_NONE ? Role::other : role(m_connection.atomName(kind), managed),
        .title = textOf(title),
        .pid = firstNumber(pid),
        .managed = managed,
        .shaped = shape && shape->bounding_shaped != 0,
        .translucent = geometry->depth == kDepthWithAlpha};
}

qint64 X11Windows::pid(xcb_window_t window) const
{
    const auto owner = m_connection.property32(window, "_NET_WM_PID");
    return owner.empty() ? 0 : owner.front();
}

} // namespace brindlecam::desktop
