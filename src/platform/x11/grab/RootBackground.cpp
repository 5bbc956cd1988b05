#include "platform/x11/grab/RootBackground.h"

#include <xcb/composite.h>

#include <string_view>

namespace brindlecam {

namespace {

constexpr std::string_view kProperty = "_XROOTPMAP_ID";

} // namespace

RootBackground::RootBackground(const x11::RootAccess& access)
    : m_access(access)
    , m_window(xcb_generate_id(access.connection))
{
    const auto atom = access.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(access.connection, 0, kProperty.size(), kProperty.data()).sequence);
    if (atom)
        m_property = atom->atom;
    const auto root = access.reply<xcb_get_geometry_reply_t>(
        xcb_get_geometry(access.connection, access.root).sequence);
    if (root)
        m_depth = root->depth;
}

RootBackground::Pixels RootBackground::painted(const QRect& native) const
{
    // The server tells nobody what it fills the root with. It fills a window with the same that has
    // its parent's background; and that one shows nothing else where it lies beneath all others.
    auto* const connection = m_access.connection;
    const std::uint32_t values[] = {XCB_BACK_PIXMAP_PARENT_RELATIVE, 1};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_access.root,
                      static_cast<std::int16_t>(native.x()), static_cast<std::int16_t>(native.y()),
                      static_cast<std::uint16_t>(native.width()),
                      static_cast<std::uint16_t>(native.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values);
    const std::uint32_t lowest[] = {XCB_STACK_MODE_BELOW};
    xcb_configure_window(connection, m_window, XCB_CONFIG_WINDOW_STACK_MODE, lowest);
    xcb_map_window(connection, m_window);
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    xcb_composite_name_window_pixmap(connection, m_window, pixmap);
    xcb_destroy_window(connection, m_window);
    return {pixmap, native.topLeft(), false};
}

std::optional<RootBackground::Pixels> RootBackground::told() const
{
    auto* const connection = m_access.connection;
    const auto property = m_access.reply<xcb_get_property_reply_t>(
        xcb_get_property(connection, 0, m_access.root, m_property, XCB_ATOM_PIXMAP, 0, 1).sequence);
    if (!property || property->format != 32 || xcb_get_property_value_length(property.get()) < 4)
        return std::nullopt;
    const auto pixmap = *static_cast<xcb_pixmap_t*>(xcb_get_property_value(property.get()));
    const auto geometry =
        m_access.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection, pixmap).sequence);
    if (!geometry || geometry->depth != m_depth)
        return std::nullopt;
    return Pixels{pixmap, {}, true};
}

bool RootBackground::isOurDoing(const xcb_generic_event_t& event) const
{
    // Every event about a window's place among others names it in this field.
    return reinterpret_cast<const xcb_map_notify_event_t&>(event).window == m_window;
}

} // namespace brindlecam
