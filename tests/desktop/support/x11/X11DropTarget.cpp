#include "desktop/support/x11/X11DropTarget.h"

#include "desktop/support/Patience.h"

#include <poll.h>

#include <array>

namespace brindlecam::desktop {

namespace {

constexpr int kUntilNextDropLook = 20; // milliseconds, for the end of the thread only
constexpr std::uint32_t kXdndVersion = 5;
constexpr std::uint32_t kMostDroppedWords = 1 << 16; // of what is dropped
constexpr std::uint32_t kDropColour = 0xffe070;
constexpr const char* kDropFormat = "text/uri-list";

xcb_window_t makeDropWindow(const Connection& connection, const QRect& place)
{
    const xcb_window_t window = xcb_generate_id(connection.raw());
    const std::array<std::uint32_t, 2> values{kDropColour, 1};
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(),
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      static_cast<std::uint16_t>(place.width()),
                      static_cast<std::uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                      values.data());
    xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, window,
                        connection.atom("XdndAware"), XCB_ATOM_ATOM, 32, 1, &kXdndVersion);
    xcb_map_window(connection.raw(), window);
    connection.sync();
    return window;
}

void sendXdnd(const Connection& connection, xcb_window_t to, const char* type,
              const std::array<std::uint32_t, 5>& data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = to;
    message.type = connection.atom(type);
    std::copy(data.begin(), data.end(), std::begin(message.data.data32));
    xcb_send_event(connection.raw(), 0, to, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    connection.sync();
}

} // namespace

X11DropTarget::X11DropTarget(const QString& display, const QRect& pixels, DropManners manners)
    : m_pixels(pixels)
    , m_manners(manners)
    , m_thread([this, display] { serve(display); })
{
    if (!waitUntil([this] { return m_serves.load(); }))
        qFatal("nothing can be dropped");
}

X11DropTarget::~X11DropTarget()
{
    m_ends = true;
    m_thread.join();
}

std::optional<QByteArray> X11DropTarget::dropped() const
{
    const std::lock_guard lock(m_mutex);
    return m_dropped;
}

void X11DropTarget::serve(const QString& display)
{
    const Connection connection(display);
    const xcb_window_t window = makeDropWindow(connection, m_pixels);
    m_serves = true;
    while (!m_ends && xcb_connection_has_error(connection.raw()) == 0) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection.raw())}) {
            const int type = event->response_type & 0x7f;
            if (type == XCB_CLIENT_MESSAGE &&
                !answer(connection, window,
                        reinterpret_cast<const xcb_client_message_event_t&>(*event)))
                return;
            if (type == XCB_SELECTION_NOTIFY)
                receive(connection, window,
                        reinterpret_cast<const xcb_selection_notify_event_t&>(*event));
        }
        pollfd readable{xcb_get_file_descriptor(connection.raw()), POLLIN, 0};
        poll(&readable, 1, kUntilNextDropLook);
    }
}

bool X11DropTarget::answer(const Connection& connection, xcb_window_t window,
                           const xcb_client_message_event_t& message)
{
    const auto& data = message.data.data32;
    if (message.type == connection.atom("XdndPosition")) {
        m_entered = true;
        m_source = data[0];
        if (m_manners == DropManners::dies)
            return false;
        const bool takes = m_manners == DropManners::takes;
        sendXdnd(connection, m_source, "XdndStatus",
                 {window, takes ? 1U : 0U, 0, 0, takes ? connection.atom("XdndActionCopy") : 0U});
    } else if (message.type == connection.atom("XdndDrop")) {
        m_source = data[0];
        xcb_convert_selection(connection.raw(), window, connection.atom("XdndSelection"),
                              connection.atom(kDropFormat), connection.atom("DROPPED"), data[2]);
        connection.sync();
    }
    return true;
}

void X11DropTarget::receive(const Connection& connection, xcb_window_t window,
                            const xcb_selection_notify_event_t& notice)
{
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection.raw(),
        xcb_get_property(connection.raw(), 1, window, connection.atom("DROPPED"), XCB_ATOM_ANY, 0,
                         kMostDroppedWords),
        nullptr));
    const bool came = notice.property != XCB_ATOM_NONE && reply;
    if (came) {
        const std::lock_guard lock(m_mutex);
        m_dropped = QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               xcb_get_property_value_length(reply.get()));
    }
    sendXdnd(connection, m_source, "XdndFinished",
             {window, came ? 1U : 0U, came ? connection.atom("XdndActionCopy") : 0U, 0, 0});
}

} // namespace brindlecam::desktop
