#include "platform/x11/desktop/WindowQuery.h"

#include "platform/x11/connection/X11.h"

#include <QMargins>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kOrdinaryLayer = 0;
constexpr int kSpecialLayer = 1; ///< docks, desktops, menus, notifications: never picked
constexpr std::uint32_t kEveryDesktop = 0xffffffff;
constexpr double kOpaque = 0xffffffff;

using Values = std::vector<std::uint32_t>;

bool contains(const Values& values, const char* atom)
{
    return std::find(values.begin(), values.end(), x11::atom(atom)) != values.end();
}

constexpr std::initializer_list<const char*> kTypes{
    "_NET_WM_WINDOW_TYPE_NORMAL",      "_NET_WM_WINDOW_TYPE_DIALOG",  "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DOCK",        "_NET_WM_WINDOW_TYPE_TOOLBAR", "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_UTILITY",     "_NET_WM_WINDOW_TYPE_SPLASH",  "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION"};
constexpr std::ptrdiff_t kOrdinaryTypes = 2; ///< the first of them

/// A window names its types in order of preference, often with the normal one at the end for window
/// managers that do not know the others: the first that is known counts.
bool isOrdinary(const Values& types)
{
    for (const std::uint32_t type : types) {
        const auto* const known = std::ranges::find_if(
            kTypes, [type](const char* name) { return x11::atom(name) == type; });
        if (known != kTypes.end())
            return known - kTypes.begin() < kOrdinaryTypes;
    }
    return types.empty();
}

bool isOnDesktop(const Values& desktop, std::optional<std::uint32_t> current)
{
    return !current || desktop.empty() || desktop.front() == kEveryDesktop ||
           desktop.front() == *current;
}

/// Left, right, top, bottom, as both extents properties order them.
QMargins margins(const Values& extents)
{
    constexpr std::size_t kItems = 4;
    if (extents.size() < kItems)
        return {};
    const auto at = [&](std::size_t i) { return static_cast<int>(extents[i] & 0xffffU); };
    return {at(0), at(2), at(1), at(3)};
}

} // namespace

void WindowQuery::internAtoms()
{
    x11::internAtoms({"_NET_CLIENT_LIST_STACKING", "_NET_SUPPORTING_WM_CHECK",
                      "_NET_CURRENT_DESKTOP", "_NET_WM_WINDOW_TYPE", "_NET_WM_STATE",
                      "_NET_WM_STATE_HIDDEN", "_NET_WM_DESKTOP", "_NET_WM_WINDOW_OPACITY",
                      "_NET_WM_PID", "_NET_FRAME_EXTENTS", "_GTK_FRAME_EXTENTS"});
    x11::internAtoms(kTypes);
}

WindowQuery::WindowQuery(xcb_window_t window)
    : m_attributes(xcb_get_window_attributes(x11::connection(), window))
    , m_geometry(xcb_get_geometry(x11::connection(), window))
    , m_origin(xcb_translate_coordinates(x11::connection(), window, x11::root(), 0, 0))
    , m_type(x11::requestProperty32(window, x11::atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM))
    , m_state(x11::requestProperty32(window, x11::atom("_NET_WM_STATE"), XCB_ATOM_ATOM))
    , m_desktop(x11::requestProperty32(window, x11::atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL))
    , m_opacity(
          x11::requestProperty32(window, x11::atom("_NET_WM_WINDOW_OPACITY"), XCB_ATOM_CARDINAL))
    , m_pid(x11::requestProperty32(window, x11::atom("_NET_WM_PID"), XCB_ATOM_CARDINAL))
    , m_frame(x11::requestProperty32(window, x11::atom("_NET_FRAME_EXTENTS"), XCB_ATOM_CARDINAL))
    , m_shadow(x11::requestProperty32(window, x11::atom("_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL))
{
}

WindowQuery::~WindowQuery()
{
    if (!m_pending)
        return;
    for (const auto sequence :
         {m_attributes.sequence, m_geometry.sequence, m_origin.sequence, m_type.sequence,
          m_state.sequence, m_desktop.sequence, m_opacity.sequence, m_pid.sequence,
          m_frame.sequence, m_shadow.sequence})
        xcb_discard_reply(x11::connection(), sequence);
}

WindowQuery::WindowQuery(WindowQuery&& other) noexcept
    : m_attributes(other.m_attributes)
    , m_geometry(other.m_geometry)
    , m_origin(other.m_origin)
    , m_type(other.m_type)
    , m_state(other.m_state)
    , m_desktop(other.m_desktop)
    , m_opacity(other.m_opacity)
    , m_pid(other.m_pid)
    , m_frame(other.m_frame)
    , m_shadow(other.m_shadow)
    , m_pending(std::exchange(other.m_pending, false))
{
}

std::optional<WindowEntry> WindowQuery::receive(std::optional<std::uint32_t> currentDesktop)
{
    m_pending = false;
    auto* const connection = x11::connection();
    const x11::Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, m_attributes, nullptr));
    const x11::Owned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, m_geometry, nullptr));
    const x11::Owned<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(connection, m_origin, nullptr));
    const auto types = x11::receiveProperty32(m_type);
    const auto state = x11::receiveProperty32(m_state);
    const auto desktop = x11::receiveProperty32(m_desktop);
    const auto opacity = x11::receiveProperty32(m_opacity);
    const auto pid = x11::receiveProperty32(m_pid);
    const auto frame = margins(x11::receiveProperty32(m_frame));
    const auto shadow = margins(x11::receiveProperty32(m_shadow));

    // Windows come and go while we ask.
    if (!attributes || !geometry || !origin)
        return {};
    if (attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
        attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        contains(state, "_NET_WM_STATE_HIDDEN") || !isOnDesktop(desktop, currentDesktop))
        return {};

    const int border = geometry->border_width;
    const QRect inside(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    WindowEntry entry;
    entry.frame = inside.adjusted(-border, -border, border, border) + frame - shadow;
    if (entry.frame.isEmpty())
        return {};
    entry.layer =
        isOrdinary(types) && !attributes->override_redirect ? kOrdinaryLayer : kSpecialLayer;
    if (!opacity.empty())
        entry.opacity = opacity.front() / kOpaque;
    if (!pid.empty())
        entry.pid = pid.front();
    return entry;
}

} // namespace brindlecam
