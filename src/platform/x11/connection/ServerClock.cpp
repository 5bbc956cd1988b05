#include "platform/x11/connection/ServerClock.h"

#include <poll.h>

#include <QDeadlineTimer>

#include <chrono>

namespace brindlecam::x11 {

namespace {

// Longer than a busy server takes, and not yet felt as a pause.
constexpr std::chrono::milliseconds kPatience{100};

} // namespace

ServerClock::ServerClock()
{
    connect();
}

void ServerClock::connect()
{
    m_connection.reset(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(m_connection.get()) != 0)
        return;
    m_window = xcb_generate_id(m_connection.get());
    const xcb_window_t root =
        xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window, root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
}

xcb_timestamp_t ServerClock::now()
{
    if (xcb_connection_has_error(m_connection.get()) != 0)
        connect();
    xcb_connection_t* const connection = m_connection.get();
    // What came too late for an earlier question.
    while (const Owned<xcb_generic_event_t> stale{xcb_poll_for_event(connection)}) {
    }
    // Changing nothing of a property is how a client learns the server's time (ICCCM 2.1).
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(connection);
    const QDeadlineTimer limit(kPatience);
    while (xcb_connection_has_error(connection) == 0) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
            if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
                return reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
        }
        if (limit.hasExpired())
            break;
        pollfd ready{xcb_get_file_descriptor(connection), POLLIN, 0};
        ::poll(&ready, 1, static_cast<int>(limit.remainingTime()));
    }
    return XCB_CURRENT_TIME;
}

} // namespace brindlecam::x11
