#include "desktop/support/x11/ProgramWindows.h"

#include <algorithm>

namespace brindlecam::desktop {

ProgramWindows::ProgramWindows(const QString& display)
    : m_connection(display)
{
}

std::vector<SeenWindow> ProgramWindows::shown(qint64 pid) const
{
    std::vector<SeenWindow> found;
    collect(m_connection.root(), pid, found);
    return found;
}

std::vector<SeenWindow> ProgramWindows::shown(qint64 pid, const QByteArray& type) const
{
    std::vector<SeenWindow> found = shown(pid);
    std::erase_if(found, [&](const SeenWindow& window) { return window.type != type; });
    return found;
}

bool ProgramWindows::exists(qint64 pid, const QRect& pixels) const
{
    const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        m_connection.raw(), xcb_query_tree(m_connection.raw(), m_connection.root()), nullptr));
    if (!tree)
        return false;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    return std::any_of(children, children + xcb_query_tree_children_length(tree.get()),
                       [&](xcb_window_t window) {
                           return belongsTo(window, pid) && place(window).contains(pixels);
                       });
}

xcb_window_t ProgramWindows::focused() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        m_connection.raw(), xcb_get_input_focus(m_connection.raw()), nullptr));
    return reply ? reply->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

bool ProgramWindows::hasKeyboard(qint64 pid) const
{
    const xcb_window_t window = focused();
    return window > XCB_INPUT_FOCUS_POINTER_ROOT && belongsTo(window, pid);
}

void ProgramWindows::collect(xcb_window_t parent, qint64 pid, std::vector<SeenWindow>& found) const
{
    const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        m_connection.raw(), xcb_query_tree(m_connection.raw(), parent), nullptr));
    if (!tree)
        return;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const xcb_window_t window = children[i];
        const Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            m_connection.raw(), xcb_get_window_attributes(m_connection.raw(), window), nullptr));
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
            continue;
        if (!belongsTo(window, pid)) {
            collect(window, pid, found);
            continue;
        }
        const auto types = m_connection.property32(window, "_NET_WM_WINDOW_TYPE");
        found.push_back(
            {.id = window,
             .pixels = place(window),
             .type = types.empty() ? QByteArray() : m_connection.atomName(types.front()),
             .managed = attributes->override_redirect == 0});
    }
}

bool ProgramWindows::belongsTo(xcb_window_t window, qint64 pid) const
{
    const auto owner = m_connection.property32(window, "_NET_WM_PID");
    return !owner.empty() && owner.front() == pid;
}

QRect ProgramWindows::place(xcb_window_t window) const
{
    const Owned<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        m_connection.raw(), xcb_get_geometry(m_connection.raw(), window), nullptr));
    const Owned<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
        m_connection.raw(),
        xcb_translate_coordinates(m_connection.raw(), window, m_connection.root(), 0, 0), nullptr));
    if (!geometry || !origin)
        return {};
    return {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

} // namespace brindlecam::desktop
