#pragma once

#include "base/Result.h"
#include "platform/PortOffers.h"
#include "platform/factory/ForcedPorts.h"

namespace brindlecam {

/// Chooses for each port by itself: what is forced, else whatever its list offers first in this
/// session, else its null class. Nothing is made yet. The error is in Spanish and names what there
/// is: a port is forced that nobody knows, or to a maker that is not offered here.
[[nodiscard]] Result<ChosenPorts> choosePorts(PortOffers offers, const Session& session,
                                              ForcedPorts forced);

} // namespace brindlecam
