#pragma once

#include "platform/Session.h"

namespace brindlecam::x11 {

/// What answers at DISPLAY, asked on a connection of its own: some round trips.
[[nodiscard]] Session::XServer probeServer();

} // namespace brindlecam::x11
