#pragma once

#include "platform/x11/connection/X11.h"

namespace brindlecam::test {

/// Serves one client only until it goes.
class ServerForMyself final {
public:
    ServerForMyself()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        xcb_grab_server(m_connection.get());
        roundTrip();
    }
    ~ServerForMyself()
    {
        xcb_ungrab_server(m_connection.get());
        roundTrip();
    }

private:
    void roundTrip()
    {
        const x11::Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    }

    x11::OwnConnection m_connection;
};

} // namespace brindlecam::test
