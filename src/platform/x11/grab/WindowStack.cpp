#include "platform/x11/grab/WindowStack.h"

#include "platform/x11/connection/X11Events.h"

#include <xcb/shape.h>

namespace brindlecam {

namespace {

QRect withBorder(const xcb_get_geometry_reply_t& geometry)
{
    const int border = 2 * geometry.border_width;
    return {geometry.x, geometry.y, geometry.width + border, geometry.height + border};
}

bool draws(const xcb_get_window_attributes_reply_t& attributes)
{
    return attributes.map_state == XCB_MAP_STATE_VIEWABLE &&
           attributes._class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
}

} // namespace

WindowStack::WindowStack(const x11::RootAccess& access, const x11::ClientIds& ours)
    : m_access(access)
    , m_ours(ours)
{
    const auto* const extension = xcb_get_extension_data(access.connection, &xcb_shape_id);
    if (extension && extension->present)
        m_shapeNotify = extension->first_event + XCB_SHAPE_NOTIFY;
    const std::uint32_t events[] = {XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_change_window_attributes(access.connection, access.root, XCB_CW_EVENT_MASK, events);
}

std::vector<StackedWindow> WindowStack::touching(const QRect& native) const
{
    auto* const connection = m_access.connection;
    const auto tree =
        m_access.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection, m_access.root).sequence);
    if (!tree)
        return {};
    struct Question {
        xcb_window_t id;
        unsigned int attributes, geometry;
    };
    std::vector<Question> questions;
    // The window on which compositors paint the screen is not among them.
    const xcb_window_t* const children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        questions.push_back({children[i],
                             xcb_get_window_attributes(connection, children[i]).sequence,
                             xcb_get_geometry(connection, children[i]).sequence});
    }
    std::vector<StackedWindow> windows;
    for (const Question& asked : questions) {
        const auto attributes = m_access.reply<xcb_get_window_attributes_reply_t>(asked.attributes);
        const auto geometry = m_access.reply<xcb_get_geometry_reply_t>(asked.geometry);
        if (!attributes || !geometry || !draws(*attributes))
            continue;
        const QRect rect = withBorder(*geometry);
        if (!rect.intersects(native))
            continue;
        const bool isPanel = m_ours.has(asked.id) && attributes->override_redirect;
        windows.push_back(
            {asked.id, attributes->visual, rect, geometry->border_width, rect, isPanel});
    }
    if (m_shapeNotify >= 0)
        findShapes(windows);
    return windows;
}

void WindowStack::findShapes(std::vector<StackedWindow>& windows) const
{
    auto* const connection = m_access.connection;
    struct Question {
        unsigned int isShaped, shape;
    };
    std::vector<Question> questions;
    for (const StackedWindow& window : windows) {
        xcb_shape_select_input(connection, window.id, 1);
        questions.push_back(
            {xcb_shape_query_extents(connection, window.id).sequence,
             xcb_shape_get_rectangles(connection, window.id, XCB_SHAPE_SK_BOUNDING).sequence});
    }
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto extents = m_access.reply<xcb_shape_query_extents_reply_t>(questions[i].isShaped);
        const auto shape = m_access.reply<xcb_shape_get_rectangles_reply_t>(questions[i].shape);
        // The rectangle of a window without a shape lacks half of its border (X.Org 21.1).
        if (!extents || !extents->bounding_shaped || !shape)
            continue;
        QRegion drawn;
        const xcb_rectangle_t* const rects = xcb_shape_get_rectangles_rectangles(shape.get());
        for (int j = 0; j < xcb_shape_get_rectangles_rectangles_length(shape.get()); ++j)
            drawn += QRect(rects[j].x, rects[j].y, rects[j].width, rects[j].height);
        // Shapes begin where the window does inside of its border.
        drawn.translate(windows[i].rect.topLeft() + QPoint(windows[i].border, windows[i].border));
        windows[i].shape = drawn & windows[i].rect;
    }
}

bool WindowStack::isChange(const xcb_generic_event_t& event) const
{
    switch (kindOf(event)) {
    case XCB_DESTROY_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_GRAVITY_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        return true;
    default:
        return m_shapeNotify >= 0 && kindOf(event) == m_shapeNotify;
    }
}

} // namespace brindlecam
