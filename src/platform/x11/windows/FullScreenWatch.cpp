#include "platform/x11/windows/FullScreenWatch.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/windows/QtOnX11.h"

#include <QEvent>
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
               return x11::pixelsOf(*screen) == rect;
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
        const bool fullScreen = contains(states, x11::atom("_NET_WM_STATE_FULLSCREEN")) ||
                                (client == active && fillsAScreen(client));
        if (fullScreen && !isDesktop(client) && x11::isViewable(client))
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

/// What of a window may make it a full-screen one, or no longer one.
void select(xcb_window_t window, std::uint32_t events)
{
    // The window may be gone; nobody minds.
    const auto cookie =
        xcb_change_window_attributes_checked(x11::connection(), window, XCB_CW_EVENT_MASK, &events);
    xcb_discard_reply(x11::connection(), cookie.sequence);
}

} // namespace

FullScreenWatch::FullScreenWatch(std::shared_ptr<X11Events> events, Callbacks callbacks)
    : m_events(std::move(events))
    , m_callbacks(std::move(callbacks))
{
    for (QTimer* timer : {&m_soon, &m_later}) {
        timer->setSingleShot(true);
        timer->callOnTimeout([this] { look(); });
    }
    m_later.setInterval(kSecondLook);
    m_subscription = m_events->listen([this](const auto& event) { return handle(event); });
    update();
}

FullScreenWatch::~FullScreenWatch()
{
    listenTo({});
}

bool FullScreenWatch::coversPartOf(const QRect& rect) const
{
    return std::ranges::any_of(m_covering,
                               [&](const QRect& covered) { return covered.intersects(rect); });
}

X11Events::Verdict FullScreenWatch::handle(const xcb_generic_event_t& event)
{
    if (mayMeanAChange(event)) {
        m_soon.start();
        m_later.start();
    }
    return X11Events::Verdict::pass;
}

// Installed only while isHeld() says so. For Qt's events and not the server's: before those have
// reached Qt, it still counts the button that isHeld() asks about as pressed.
bool FullScreenWatch::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::Hide)
        m_soon.start();
    return false;
}

bool FullScreenWatch::mayMeanAChange(const xcb_generic_event_t& event)
{
    if (kindOf(event) == XCB_PROPERTY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.window == x11::root())
            return notify.atom == x11::atom("_NET_ACTIVE_WINDOW") ||
                   notify.atom == x11::atom("_NET_CLIENT_LIST_STACKING");
        return notify.atom == x11::atom("_NET_WM_STATE") && m_listened.contains(notify.window);
    }
    if (kindOf(event) == XCB_CONFIGURE_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        const auto known = m_listened.find(notify.window);
        const QSize size(notify.width, notify.height);
        return known != m_listened.end() && std::exchange(known->second, size) != size;
    }
    return false;
}

void FullScreenWatch::listenTo(const std::vector<xcb_window_t>& windows)
{
    std::erase_if(m_listened, [&](const auto& entry) {
        const bool dropped = std::ranges::find(windows, entry.first) == windows.end();
        if (dropped)
            select(entry.first, XCB_EVENT_MASK_NO_EVENT);
        return dropped;
    });
    for (const xcb_window_t window : windows)
        listenAlsoTo(window);
}

void FullScreenWatch::listenAlsoTo(xcb_window_t window)
{
    if (m_listened.try_emplace(window).second)
        select(window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void FullScreenWatch::look()
{
    if (update())
        m_callbacks.looked();
}

bool FullScreenWatch::update()
{
    if (m_callbacks.isHeld()) {
        qApp->installEventFilter(this);
        m_later.stop();
        return false;
    }
    qApp->removeEventFilter(this);
    const xcb_window_t active = windowProperty(x11::root(), "_NET_ACTIVE_WINDOW");
    std::vector<xcb_window_t> listened;
    // Never the root: a client has one event mask for a window, and on this connection Qt has set
    // the root's.
    if (active != XCB_WINDOW_NONE && active != x11::root() && !x11::isOurs(active)) {
        listened.push_back(active);
        listenAlsoTo(active); // before it is asked about, so that no change falls in between
    }
    const auto windows = fullScreenWindows(active);
    listened.insert(listened.end(), windows.begin(), windows.end());
    listenTo(listened);
    // While a panel of ours has the focus, and while the focus is on its way from one window to the
    // next, all stays as it is.
    if (!windows.empty() && (active == XCB_WINDOW_NONE || isOwnPanel(active)))
        return false;
    m_covering.clear();
    for (const xcb_window_t window : windows) {
        const auto rect = x11::rectOnRoot(window);
        if (rect && liesAboveAll(window, active))
            m_covering.push_back(*rect);
    }
    return true;
}

} // namespace brindlecam
