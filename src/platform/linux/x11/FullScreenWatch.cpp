#include "platform/linux/x11/FullScreenWatch.h"

#include "platform/linux/x11/X11.h"
#include "platform/linux/x11/X11Windows.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

// A window manager may restack a window before it says that this is a full-screen one.
constexpr std::chrono::milliseconds kSecondLook{250};

bool contains(const std::vector<std::uint32_t>& values, std::uint32_t value)
{
    return std::ranges::find(values, value) != values.end();
}

xcb_window_t windowProperty(xcb_window_t window, const char* name)
{
    const auto values = x11::property32(window, x11::atom(name), XCB_ATOM_WINDOW);
    return values.empty() ? xcb_window_t{XCB_WINDOW_NONE} : values.front();
}

/// Programs from before there was a state for it just make a window as large as the screen.
bool fillsAScreen(xcb_window_t window)
{
    const auto rect = x11::rectOnRoot(window);
    return rect && std::ranges::any_of(QGuiApplication::screens(), [&](const QScreen* screen) {
               const QSizeF size = QSizeF(screen->geometry().size()) * screen->devicePixelRatio();
               return rect->topLeft() == screen->geometry().topLeft() &&
                      rect->size() == size.toSize();
           });
}

/// What the icons of a desktop stand on fills the screen below everything else.
bool isDesktop(xcb_window_t window)
{
    return contains(x11::property32(window, x11::atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM),
                    x11::atom("_NET_WM_WINDOW_TYPE_DESKTOP"));
}

/// Full-screen windows of other programs that are on the screen now.
std::vector<xcb_window_t> fullScreenWindows(xcb_window_t active)
{
    const auto clients =
        x11::property32(x11::root(), x11::atom("_NET_CLIENT_LIST_STACKING"), XCB_ATOM_WINDOW);
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(clients.size());
    for (const xcb_window_t client : clients)
        cookies.push_back(
            x11::requestProperty32(client, x11::atom("_NET_WM_STATE"), XCB_ATOM_ATOM));
    std::vector<xcb_window_t> found;
    for (std::size_t index = 0; index < clients.size(); ++index) {
        const xcb_window_t client = clients[index];
        const auto states = x11::receiveProperty32(cookies[index]);
        if (x11::isOurs(client))
            continue;
        if (isDesktop(client))
            continue;
        const bool fullScreen = contains(states, x11::atom("_NET_WM_STATE_FULLSCREEN")) ||
                                (client == active && fillsAScreen(client));
        if (fullScreen && x11::isViewable(client))
            found.push_back(client);
    }
    return found;
}

bool isOwnPanel(xcb_window_t window)
{
    return x11::isOurs(window) &&
           !contains(x11::property32(window, x11::atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM),
                     x11::atom("_NET_WM_WINDOW_TYPE_DIALOG"));
}

bool liesAboveAll(xcb_window_t fullScreen, xcb_window_t active)
{
    if (active == fullScreen || windowProperty(active, "WM_TRANSIENT_FOR") == fullScreen)
        return true;
    const auto rect = x11::rectOnRoot(fullScreen);
    const auto activeRect = x11::rectOnRoot(active);
    return rect && activeRect && !rect->contains(activeRect->center());
}

} // namespace

FullScreenWatch::FullScreenWatch(std::shared_ptr<X11Events> events, std::function<void()> changed)
    : m_events(std::move(events))
{
    for (QTimer* timer : {&m_soon, &m_later}) {
        timer->setSingleShot(true);
        timer->callOnTimeout([this] { look(); });
    }
    m_later.setInterval(kSecondLook);
    m_subscription = m_events->listen([this](const auto& event) { return handle(event); });
    look();
    m_changed = std::move(changed);
}

X11Events::Verdict FullScreenWatch::handle(const xcb_generic_event_t& event)
{
    if (kindOf(event) != XCB_PROPERTY_NOTIFY)
        return X11Events::Verdict::pass;
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.window == x11::root() && (notify.atom == x11::atom("_NET_ACTIVE_WINDOW") ||
                                         notify.atom == x11::atom("_NET_CLIENT_LIST_STACKING"))) {
        m_soon.start();
        m_later.start();
    }
    return X11Events::Verdict::pass;
}

void FullScreenWatch::look()
{
    // The windows are made anew: not while one of them is being dragged.
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        m_later.start();
        return;
    }
    const xcb_window_t active = windowProperty(x11::root(), "_NET_ACTIVE_WINDOW");
    const auto windows = fullScreenWindows(active);
    // While a panel of ours has the focus, and while it is on its way, all stays as it is.
    if (!windows.empty() && (active == XCB_WINDOW_NONE || isOwnPanel(active)))
        return;
    const bool covers = std::ranges::any_of(
        windows, [active](xcb_window_t window) { return liesAboveAll(window, active); });
    if (std::exchange(m_covers, covers) != covers && m_changed)
        m_changed();
}

} // namespace brindlecam
