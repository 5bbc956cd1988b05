#pragma once

#include "platform/Platform.h"
#include "platform/PortOffers.h"

namespace brindlecam {

/// Ports that do nothing and find nothing: no displays, no windows, every key refused. What unit
/// tests start from and what a missing capability becomes.
[[nodiscard]] Platform makeNullPlatform();

/// The same for the choice of ports: every list, and nothing in it but its null class.
[[nodiscard]] PortOffers nullOffers();

} // namespace brindlecam
