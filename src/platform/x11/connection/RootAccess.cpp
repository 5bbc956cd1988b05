#include "platform/x11/connection/RootAccess.h"

#include <xcb/xcbext.h>

namespace brindlecam::x11 {

RootAccess RootAccess::onQtsConnection()
{
    xcb_connection_t* const connection = x11::connection();
    return {connection, x11::root(),
            [connection](unsigned int sequence, xcb_generic_error_t** error) {
                return xcb_wait_for_reply(connection, sequence, error);
            }};
}

} // namespace brindlecam::x11
