#include "platform/x11/desktop/Struts.h"

#include "platform/x11/connection/X11.h"

#include <algorithm>
#include <array>
#include <limits>

namespace brindlecam::Struts {

namespace {

constexpr std::array kEdges{Edge::left, Edge::right, Edge::top, Edge::bottom};
constexpr std::size_t kStrutItems = 4;
constexpr std::size_t kPartialItems = 12;

/// The properties of one window that may reserve space.
struct Candidate {
    bool managed;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_property_cookie_t type;
    xcb_get_property_cookie_t partial;
    xcb_get_property_cookie_t whole;
};

/// Who places a window.
enum class Owner { windowManager, itself };

Candidate request(xcb_window_t window, Owner owner)
{
    return {owner == Owner::windowManager, xcb_get_window_attributes(x11::connection(), window),
            x11::requestProperty32(window, x11::atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM),
            x11::requestProperty32(window, x11::atom("_NET_WM_STRUT_PARTIAL"), XCB_ATOM_CARDINAL),
            x11::requestProperty32(window, x11::atom("_NET_WM_STRUT"), XCB_ATOM_CARDINAL)};
}

void append(std::vector<Strut>& struts, const std::vector<std::uint32_t>& depths,
            const std::vector<std::uint32_t>& partial)
{
    // Sixteen bits hold every coordinate; nonsense beyond them must not overflow.
    const auto pixels = [](std::uint32_t value) {
        return static_cast<int>(
            std::min<std::uint32_t>(value, std::numeric_limits<std::int16_t>::max()));
    };
    for (std::size_t i = 0; i < kEdges.size(); ++i) {
        if (depths[i] == 0)
            continue;
        Strut strut{kEdges[i], pixels(depths[i]), 0, std::numeric_limits<std::int16_t>::max()};
        if (!partial.empty()) {
            strut.first = pixels(partial[kStrutItems + 2 * i]);
            strut.last = pixels(partial[kStrutItems + 2 * i + 1]);
        }
        struts.push_back(strut);
    }
}

void receive(std::vector<Strut>& struts, const Candidate& candidate)
{
    const x11::Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x11::connection(), candidate.attributes, nullptr));
    const auto type = x11::receiveProperty32(candidate.type);
    const auto partial = x11::receiveProperty32(candidate.partial);
    const auto whole = x11::receiveProperty32(candidate.whole);

    // Outside the window manager's list only docks on the screen count: without a window manager,
    // or placed by themselves.
    const bool dock =
        std::find(type.begin(), type.end(), x11::atom("_NET_WM_WINDOW_TYPE_DOCK")) != type.end();
    const bool shown = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    if (!candidate.managed && !(dock && shown))
        return;
    if (partial.size() >= kPartialItems)
        append(struts, partial, partial);
    else if (whole.size() >= kStrutItems)
        append(struts, whole, {});
}

/// The display without what one strut takes of it.
QRect withoutStrut(const QRect& display, const QRect& visible, QSize desktop, const Strut& strut)
{
    const bool upright = strut.edge == Edge::left || strut.edge == Edge::right;
    const int along = upright ? display.top() : display.left();
    const int alongEnd = upright ? display.bottom() : display.right();
    if (strut.last < along || strut.first > alongEnd)
        return visible;

    QRect rest = visible;
    switch (strut.edge) {
    case Edge::left:
        if (strut.depth <= display.right())
            rest.setLeft(std::max(rest.left(), strut.depth));
        break;
    case Edge::right:
        if (desktop.width() - strut.depth > display.left())
            rest.setRight(std::min(rest.right(), desktop.width() - strut.depth - 1));
        break;
    case Edge::top:
        if (strut.depth <= display.bottom())
            rest.setTop(std::max(rest.top(), strut.depth));
        break;
    case Edge::bottom:
        if (desktop.height() - strut.depth > display.top())
            rest.setBottom(std::min(rest.bottom(), desktop.height() - strut.depth - 1));
        break;
    }
    return rest.isEmpty() ? visible : rest;
}

} // namespace

std::vector<Strut> read()
{
    x11::internAtoms({"_NET_CLIENT_LIST", "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK",
                      "_NET_WM_STRUT_PARTIAL", "_NET_WM_STRUT"});
    const auto treeCookie = xcb_query_tree(x11::connection(), x11::root());
    const auto clients =
        x11::property32(x11::root(), x11::atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW);
    const x11::Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x11::connection(), treeCookie, nullptr));

    std::vector<Candidate> candidates;
    for (const xcb_window_t window : clients)
        candidates.push_back(request(window, Owner::windowManager));
    if (tree) {
        const auto* const first = xcb_query_tree_children(tree.get());
        std::for_each(first, first + xcb_query_tree_children_length(tree.get()),
                      [&](xcb_window_t window) {
                          if (std::find(clients.begin(), clients.end(), window) == clients.end())
                              candidates.push_back(request(window, Owner::itself));
                      });
    }
    std::vector<Strut> struts;
    for (const auto& candidate : candidates)
        receive(struts, candidate);
    return struts;
}

QRect visibleFrame(const QRect& display, QSize desktop, const std::vector<Strut>& struts)
{
    QRect visible = display;
    for (const auto& strut : struts)
        visible = withoutStrut(display, visible, desktop, strut);
    return visible;
}

} // namespace brindlecam::Struts
