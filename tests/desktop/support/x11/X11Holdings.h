#pragma once

#include "desktop/support/Holdings.h"
#include "desktop/support/x11/Connection.h"

namespace brindlecam::desktop {

/// The process whose client made this window or what else the server holds; 0 when there is none.
[[nodiscard]] qint64 makerOf(const Connection& connection, std::uint32_t resource);
/// The server's resources of all connections of a process.
[[nodiscard]] Holdings holdingsOf(const Connection& connection, qint64 pid);

} // namespace brindlecam::desktop
