#include "x11/ports/Client.h"

#include "desktop/support/x11/X11Geometry.h"
#include "desktop/support/x11/X11Pictures.h"

namespace brindlecam::test {

using desktop::Owned;

xcb_window_t Client::show(const WindowOptions& options)
{
    const xcb_window_t window = xcb_generate_id(m_connection.raw());
    const std::uint32_t values[] = {options.unmanaged ? 1U : 0U};
    const auto& rect = options.rect;
    xcb_create_window(
        m_connection.raw(), XCB_COPY_FROM_PARENT, window, root(),
        static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
        static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(rect.height()),
        static_cast<std::uint16_t>(options.border),
        options.inputOnly ? XCB_WINDOW_CLASS_INPUT_ONLY : XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, values);
    if (!options.type.isEmpty())
        setNumbers(window, "_NET_WM_WINDOW_TYPE", {atom(options.type)}, XCB_ATOM_ATOM);
    // The place is the user's wish: a window manager keeps it.
    constexpr std::uint32_t kUserPositionAndSize = 3;
    std::vector<std::uint32_t> hints(18, 0);
    hints[0] = kUserPositionAndSize;
    setNumbers(window, "WM_NORMAL_HINTS", hints, XCB_ATOM_WM_SIZE_HINTS);
    xcb_map_window(m_connection.raw(), window);
    m_connection.sync();
    return window;
}

void Client::destroy(xcb_window_t window)
{
    xcb_destroy_window(m_connection.raw(), window);
    m_connection.sync();
}

void Client::raise(xcb_window_t window)
{
    const std::uint32_t values[] = {XCB_STACK_MODE_ABOVE};
    xcb_configure_window(m_connection.raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, values);
    m_connection.sync();
}

void Client::setNumbers(xcb_window_t window, const QByteArray& property,
                        const std::vector<std::uint32_t>& values, xcb_atom_t type)
{
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    m_connection.sync();
}

void Client::remove(xcb_window_t window, const QByteArray& property)
{
    xcb_delete_property(m_connection.raw(), window, atom(property));
    m_connection.sync();
}

void Client::paintDesktop(const QImage& picture)
{
    desktop::hangWallpaper(m_connection, picture);
}

void Client::setArrowPointer()
{
    constexpr std::uint16_t kLeftArrow = 68; // its mask is the next glyph
    const xcb_font_t font = xcb_generate_id(m_connection.raw());
    const xcb_cursor_t cursor = xcb_generate_id(m_connection.raw());
    xcb_open_font(m_connection.raw(), font, 6, "cursor");
    xcb_create_glyph_cursor(m_connection.raw(), cursor, font, font, kLeftArrow, kLeftArrow + 1,
                            0xffff, 0, 0, 0, 0, 0xffff);
    const std::uint32_t values[] = {cursor};
    xcb_change_window_attributes(m_connection.raw(), root(), XCB_CW_CURSOR, values);
    m_connection.sync();
}

void Client::takeSelection(const QByteArray& selection, xcb_window_t window)
{
    xcb_set_selection_owner(m_connection.raw(), window, atom(selection), XCB_CURRENT_TIME);
    m_connection.sync();
}

void Client::dropSelection(const QByteArray& selection)
{
    takeSelection(selection, XCB_WINDOW_NONE);
}

QRect Client::outerRect(xcb_window_t window) const
{
    const Owned<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        m_connection.raw(), xcb_get_geometry(m_connection.raw(), window), nullptr));
    if (!geometry)
        return {};
    const int border = geometry->border_width;
    return desktop::insideOf(m_connection, window).adjusted(-border, -border, border, border);
}

xcb_window_t Client::topLevel(xcb_window_t window) const
{
    while (true) {
        const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            m_connection.raw(), xcb_query_tree(m_connection.raw(), window), nullptr));
        if (!tree || tree->parent == root())
            return window;
        window = tree->parent;
    }
}

} // namespace brindlecam::test
