#include "x11/ports/Client.h"

#include "platform/x11/connection/X11.h"

#include <xcb/xcb.h>

#include <algorithm>

namespace brindlecam::test {

using x11::Owned;

Client::Client()
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data)
{
}

Client::~Client()
{
    // The picture of the desktop is remembered by nobody else.
    xcb_disconnect(m_connection);
}

xcb_atom_t Client::atom(const QByteArray& name) const
{
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.constData()),
        nullptr));
    return reply->atom;
}

xcb_window_t Client::show(const WindowOptions& options)
{
    const xcb_window_t window = xcb_generate_id(m_connection);
    const std::uint32_t values[] = {options.unmanaged ? 1U : 0U};
    const auto& rect = options.rect;
    xcb_create_window(
        m_connection, XCB_COPY_FROM_PARENT, window, root(), static_cast<std::int16_t>(rect.x()),
        static_cast<std::int16_t>(rect.y()), static_cast<std::uint16_t>(rect.width()),
        static_cast<std::uint16_t>(rect.height()), static_cast<std::uint16_t>(options.border),
        options.inputOnly ? XCB_WINDOW_CLASS_INPUT_ONLY : XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, values);
    if (!options.type.isEmpty())
        setNumbers(window, "_NET_WM_WINDOW_TYPE", {atom(options.type)}, XCB_ATOM_ATOM);
    // The place is the user's wish: a window manager keeps it.
    constexpr std::uint32_t kUserPositionAndSize = 3;
    std::vector<std::uint32_t> hints(18, 0);
    hints[0] = kUserPositionAndSize;
    setNumbers(window, "WM_NORMAL_HINTS", hints, XCB_ATOM_WM_SIZE_HINTS);
    xcb_map_window(m_connection, window);
    sync();
    return window;
}

void Client::destroy(xcb_window_t window)
{
    xcb_destroy_window(m_connection, window);
    sync();
}

void Client::raise(xcb_window_t window)
{
    const std::uint32_t values[] = {XCB_STACK_MODE_ABOVE};
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, values);
    sync();
}

void Client::setNumbers(xcb_window_t window, const QByteArray& property,
                        const std::vector<std::uint32_t>& values, xcb_atom_t type)
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    sync();
}

void Client::remove(xcb_window_t window, const QByteArray& property)
{
    xcb_delete_property(m_connection, window, atom(property));
    sync();
}

void Client::ask(xcb_window_t window, const QByteArray& message, std::uint32_t value,
                 std::uint32_t second)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    event.data.data32[0] = value;
    event.data.data32[1] = second;
    xcb_send_event(m_connection, 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    sync();
}

void Client::paintDesktop(const QImage& picture)
{
    const bool deep = m_screen->root_depth > 16;
    const QImage native =
        picture.convertToFormat(deep ? QImage::Format_RGB32 : QImage::Format_RGB16);
    const xcb_gcontext_t context = xcb_generate_id(m_connection);
    xcb_create_gc(m_connection, context, root(), 0, nullptr);
    constexpr int kRows = 16; // below the longest request
    for (int y = 0; y < native.height(); y += kRows) {
        const int rows = std::min(kRows, native.height() - y);
        xcb_put_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), context,
                      static_cast<std::uint16_t>(native.width()), static_cast<std::uint16_t>(rows),
                      0, static_cast<std::int16_t>(y), 0, m_screen->root_depth,
                      static_cast<std::uint32_t>(rows * native.bytesPerLine()),
                      native.constScanLine(y));
    }
    xcb_free_gc(m_connection, context);
    sync();
}

void Client::movePointer(QPoint to)
{
    xcb_warp_pointer(m_connection, XCB_WINDOW_NONE, root(), 0, 0, 0, 0,
                     static_cast<std::int16_t>(to.x()), static_cast<std::int16_t>(to.y()));
    sync();
}

void Client::setArrowPointer()
{
    constexpr std::uint16_t kLeftArrow = 68; // its mask is the next glyph
    const xcb_font_t font = xcb_generate_id(m_connection);
    const xcb_cursor_t cursor = xcb_generate_id(m_connection);
    xcb_open_font(m_connection, font, 6, "cursor");
    xcb_create_glyph_cursor(m_connection, cursor, font, font, kLeftArrow, kLeftArrow + 1, 0xffff, 0,
                            0, 0, 0, 0xffff);
    const std::uint32_t values[] = {cursor};
    xcb_change_window_attributes(m_connection, root(), XCB_CW_CURSOR, values);
    sync();
}

void Client::takeSelection(const QByteArray& selection, xcb_window_t window)
{
    xcb_set_selection_owner(m_connection, window, atom(selection), XCB_CURRENT_TIME);
    sync();
}

void Client::dropSelection(const QByteArray& selection)
{
    takeSelection(selection, XCB_WINDOW_NONE);
}

QRect Client::outerRect(xcb_window_t window) const
{
    const Owned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    const Owned<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, window, root(), 0, 0), nullptr));
    if (!geometry || !origin)
        return {};
    const int border = geometry->border_width;
    return {origin->dst_x - border, origin->dst_y - border, geometry->width + 2 * border,
            geometry->height + 2 * border};
}

xcb_window_t Client::topLevel(xcb_window_t window) const
{
    while (true) {
        const Owned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
        if (!tree || tree->parent == root())
            return window;
        window = tree->parent;
    }
}

bool Client::isViewable(xcb_window_t window) const
{
    const Owned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void Client::sync() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

} // namespace brindlecam::test
