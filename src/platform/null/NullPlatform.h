#pragma once

#include "platform/Platform.h"

namespace brindlecam {

/// Ports that do nothing and find nothing: no displays, no windows, every key refused. What unit
/// tests start from and what a missing capability becomes.
[[nodiscard]] Platform makeNullPlatform();

} // namespace brindlecam
