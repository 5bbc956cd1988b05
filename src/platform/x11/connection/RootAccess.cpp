#include "platform/x11/connection/RootAccess.h"

#include "platform/x11/connection/PatientConnection.h"

#include <xcb/xcbext.h>

namespace brindlecam::x11 {

RootAccess RootAccess::onQtsConnection()
{
    return {x11::connection(), x11::root(), nullptr};
}

void* RootAccess::awaitReply(unsigned int sequence, xcb_generic_error_t** error) const
{
    return patient ? patient->awaitReply(sequence, error)
                   : xcb_wait_for_reply(connection, sequence, error);
}

} // namespace brindlecam::x11
