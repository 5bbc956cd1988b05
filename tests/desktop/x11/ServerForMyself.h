#pragma once

#include "desktop/support/x11/Connection.h"
#include "x11/ThisDesktop.h"

namespace brindlecam::test {

/// Serves one client only until it goes.
class ServerForMyself final {
public:
    ServerForMyself()
    {
        xcb_grab_server(m_connection.raw());
        m_connection.sync();
    }
    ~ServerForMyself()
    {
        xcb_ungrab_server(m_connection.raw());
        m_connection.sync();
    }
    ServerForMyself(const ServerForMyself&) = delete;
    ServerForMyself& operator=(const ServerForMyself&) = delete;

private:
    desktop::Connection m_connection{display()};
};

} // namespace brindlecam::test
