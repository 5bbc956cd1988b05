#include "platform/x11/grab/ClientArea.h"

#include "platform/x11/connection/X11Events.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

/// Frames within frames that are looked through.
constexpr int kDepth = 3;
/// Rectangles that an opaque part may have.
constexpr std::uint32_t kMostNumbers = 4 * 256;

xcb_atom_t atomOf(const x11::RootAccess& access, std::string_view name)
{
    const auto reply = access.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(access.connection, 0, static_cast<std::uint16_t>(name.size()), name.data())
            .sequence);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace

ClientArea::ClientArea(const x11::RootAccess& access)
    : m_access(access)
    , m_state(atomOf(access, "WM_STATE"))
    , m_opaque(atomOf(access, "_NET_WM_OPAQUE_REGION"))
{
}

QRegion ClientArea::opaque(const StackedWindow& window, bool blends) const
{
    auto* const connection = m_access.connection;
    const xcb_window_t client = clientIn(window.id);
    const std::uint32_t events[] = {XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                    XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_change_window_attributes(connection, client, XCB_CW_EVENT_MASK, events);
    const auto asked = xcb_translate_coordinates(connection, client, m_access.root, 0, 0);
    const auto size =
        m_access.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection, client).sequence);
    const auto place = m_access.reply<xcb_translate_coordinates_reply_t>(asked.sequence);
    if (!size || !place)
        return {};
    const QRect inside(place->dst_x, place->dst_y, size->width, size->height);
    const QRegion drawn = window.shape & inside;
    return blends ? drawn & toldOpaque(client).translated(inside.topLeft()) : drawn;
}

xcb_window_t ClientArea::clientIn(xcb_window_t window) const
{
    auto* const connection = m_access.connection;
    std::vector<xcb_window_t> level{window};
    for (int depth = 0; depth < kDepth && !level.empty(); ++depth) {
        std::vector<std::array<unsigned int, 2>> questions;
        for (const xcb_window_t candidate : level)
            questions.push_back(
                {xcb_get_property(connection, 0, candidate, m_state, XCB_ATOM_ANY, 0, 0).sequence,
                 xcb_query_tree(connection, candidate).sequence});
        std::vector<xcb_window_t> below;
        xcb_window_t found = XCB_WINDOW_NONE;
        for (std::size_t i = 0; i < level.size(); ++i) {
            const auto state = m_access.reply<xcb_get_property_reply_t>(questions[i][0]);
            const auto tree = m_access.reply<xcb_query_tree_reply_t>(questions[i][1]);
            if (state && state->type != XCB_ATOM_NONE && found == XCB_WINDOW_NONE)
                found = level[i];
            if (tree) {
                const auto* const children = xcb_query_tree_children(tree.get());
                below.insert(below.end(), children,
                             children + xcb_query_tree_children_length(tree.get()));
            }
        }
        if (found != XCB_WINDOW_NONE)
            return found;
        level = std::move(below);
    }
    return window;
}

QRegion ClientArea::toldOpaque(xcb_window_t client) const
{
    const auto property = m_access.reply<xcb_get_property_reply_t>(
        xcb_get_property(m_access.connection, 0, client, m_opaque, XCB_ATOM_CARDINAL, 0,
                         kMostNumbers)
            .sequence);
    QRegion region;
    if (!property || property->format != 32)
        return region;
    const auto* const numbers = static_cast<std::int32_t*>(xcb_get_property_value(property.get()));
    const int count = xcb_get_property_value_length(property.get()) / 4;
    for (int i = 0; i + 3 < count; i += 4)
        region += QRect(numbers[i], numbers[i + 1], numbers[i + 2], numbers[i + 3]);
    return region;
}

bool ClientArea::isChange(const xcb_generic_event_t& event) const
{
    return kindOf(event) == XCB_PROPERTY_NOTIFY &&
           reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == m_opaque;
}

} // namespace brindlecam
