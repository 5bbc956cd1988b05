#include "platform/x11/desktop/X11WindowList.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/desktop/WindowQuery.h"

#include <algorithm>

namespace brindlecam {

namespace {

/// What the root window says about the windows on it.
struct Desktop {
    std::vector<xcb_window_t> clients;  ///< bottom to top, as the window manager stacks them
    std::vector<xcb_window_t> children; ///< bottom to top, all of them
    xcb_window_t check = XCB_WINDOW_NONE;
    std::optional<std::uint32_t> current; ///< the desktop that is shown
};

Desktop readDesktop()
{
    const auto clients = x11::requestProperty32(x11::root(), x11::atom("_NET_CLIENT_LIST_STACKING"),
                                                XCB_ATOM_WINDOW);
    const auto check =
        x11::requestProperty32(x11::root(), x11::atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
    const auto current =
        x11::requestProperty32(x11::root(), x11::atom("_NET_CURRENT_DESKTOP"), XCB_ATOM_CARDINAL);
    const auto treeCookie = xcb_query_tree(x11::connection(), x11::root());

    Desktop desktop;
    desktop.clients = x11::receiveProperty32(clients);
    if (const auto windows = x11::receiveProperty32(check); !windows.empty())
        desktop.check = windows.front();
    if (const auto number = x11::receiveProperty32(current); !number.empty())
        desktop.current = number.front();
    const x11::Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x11::connection(), treeCookie, nullptr));
    if (tree) {
        const auto* const first = xcb_query_tree_children(tree.get());
        desktop.children.assign(first, first + xcb_query_tree_children_length(tree.get()));
    }
    return desktop;
}

std::vector<WindowQuery> request(const std::vector<xcb_window_t>& bottomToTop)
{
    std::vector<WindowQuery> queries;
    queries.reserve(bottomToTop.size());
    std::for_each(bottomToTop.rbegin(), bottomToTop.rend(),
                  [&](xcb_window_t window) { queries.emplace_back(window); });
    return queries;
}

} // namespace

std::vector<WindowEntry> X11WindowList::frontToBack() const
{
    WindowQuery::internAtoms();
    Desktop desktop = readDesktop();

    // The list outlives a window manager that was killed; its check window does not.
    auto queries = request(desktop.clients);
    const bool managed =
        desktop.check != XCB_WINDOW_NONE &&
        !x11::property32(desktop.check, x11::atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW)
             .empty();
    if (!managed || queries.empty()) {
        queries = request(desktop.children);
        desktop.current.reset();
    }

    std::vector<WindowEntry> entries;
    for (auto& query : queries) {
        if (auto entry = query.receive(desktop.current))
            entries.push_back(*entry);
    }
    return entries;
}

} // namespace brindlecam
