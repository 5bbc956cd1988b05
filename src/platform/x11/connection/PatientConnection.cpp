#include "platform/x11/connection/PatientConnection.h"

#include <poll.h>
#include <sys/socket.h>

#include <xcb/xcbext.h>

namespace brindlecam::x11 {

PatientConnection::PatientConnection(std::chrono::milliseconds patience)
    : m_patience(patience)
    , m_connection(xcb_connect(nullptr, nullptr))
    , m_limit(patience)
{
}

bool PatientConnection::isAlive() const
{
    return xcb_connection_has_error(raw()) == 0;
}

const xcb_screen_t& PatientConnection::screen() const
{
    return *xcb_setup_roots_iterator(xcb_get_setup(raw())).data;
}

RootAccess PatientConnection::access()
{
    return {raw(), screen().root, this};
}

void PatientConnection::cut()
{
    m_cut = true;
    hangUp();
}

void PatientConnection::hangUp() const
{
    ::shutdown(xcb_get_file_descriptor(raw()), SHUT_RDWR);
}

void* PatientConnection::awaitReply(unsigned int sequence, xcb_generic_error_t** error)
{
    void* reply = nullptr;
    xcb_flush(raw());
    while (xcb_poll_for_reply(raw(), sequence, &reply, error) == 0) {
        tellEvents(xcb_poll_for_event); // only asking for events reads what has come
        if (xcb_poll_for_reply(raw(), sequence, &reply, error) != 0)
            break;
        if (!awaitBytes())
            hangUp();
    }
    return reply;
}

void PatientConnection::tellEvents()
{
    tellEvents(xcb_poll_for_queued_event);
}

void PatientConnection::tellEvents(Poll poll)
{
    while (const Owned<xcb_generic_event_t> event{poll(raw())}) {
        if (m_listener)
            m_listener(*event);
    }
}

bool PatientConnection::awaitBytes() const
{
    pollfd ready{xcb_get_file_descriptor(raw()), POLLIN, 0};
    ::poll(&ready, 1, static_cast<int>(m_limit.remainingTime()));
    return !m_limit.hasExpired() || ready.revents != 0;
}

} // namespace brindlecam::x11
