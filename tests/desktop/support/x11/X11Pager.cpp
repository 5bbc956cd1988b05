#include "desktop/support/x11/X11Pager.h"

#include <algorithm>

namespace brindlecam::desktop {

namespace {

/// Whom a message comes from: pagers are obeyed where programs would be held back.
constexpr std::uint32_t kFromPager = 2;

} // namespace

X11Pager::X11Pager(const QString& display)
    : m_connection(display)
{
}

void X11Pager::activate(WindowId window)
{
    ask(window, "_NET_ACTIVE_WINDOW", {kFromPager, 0, 0});
}

void X11Pager::iconify(WindowId window)
{
    constexpr std::uint32_t kIconic = 3;
    ask(window, "WM_CHANGE_STATE", {kIconic});
}

void X11Pager::setFullScreen(WindowId window, bool fullScreen)
{
    ask(window, "_NET_WM_STATE",
        {fullScreen ? 1U : 0U, m_connection.atom("_NET_WM_STATE_FULLSCREEN"), 0, kFromPager});
}

void X11Pager::move(WindowId window, QPoint pixel)
{
    constexpr std::uint32_t kStaticGravity = 10; // the place is that of the inside
    constexpr std::uint32_t kXAndY = 0x0300;
    constexpr std::uint32_t kPlaceByPager = kFromPager << 12 | kXAndY | kStaticGravity;
    ask(window, "_NET_MOVERESIZE_WINDOW",
        {kPlaceByPager, static_cast<std::uint32_t>(pixel.x()),
         static_cast<std::uint32_t>(pixel.y()), 0, 0});
}

void X11Pager::focus(WindowId window)
{
    xcb_set_input_focus(m_connection.raw(), XCB_INPUT_FOCUS_POINTER_ROOT,
                        static_cast<xcb_window_t>(window), XCB_CURRENT_TIME);
    m_connection.sync();
}

void X11Pager::setDesktopCount(int count)
{
    ask(m_connection.root(), "_NET_NUMBER_OF_DESKTOPS", {static_cast<std::uint32_t>(count)});
}

void X11Pager::goToDesktop(int number)
{
    ask(m_connection.root(), "_NET_CURRENT_DESKTOP", {static_cast<std::uint32_t>(number)});
}

void X11Pager::sendToDesktop(WindowId window, int number)
{
    ask(window, "_NET_WM_DESKTOP", {static_cast<std::uint32_t>(number), kFromPager});
}

int X11Pager::currentDesktop() const
{
    const auto current = m_connection.property32(m_connection.root(), "_NET_CURRENT_DESKTOP");
    return current.empty() ? -1 : static_cast<int>(current.front());
}

void X11Pager::ask(WindowId window, const QByteArray& message,
                   std::initializer_list<std::uint32_t> data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = static_cast<xcb_window_t>(window);
    event.type = m_connection.atom(message);
    std::ranges::copy(data, std::begin(event.data.data32));
    xcb_send_event(m_connection.raw(), 0, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    m_connection.sync();
}

} // namespace brindlecam::desktop
