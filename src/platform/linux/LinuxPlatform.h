#pragma once

#include "platform/Platform.h"

namespace brindlecam {

/// What preparePlatform() and makePlatform() do on Linux: which display system is there is found
/// out when the program starts.
namespace LinuxPlatform {

[[nodiscard]] std::optional<Error> prepare();
[[nodiscard]] Platform make();

} // namespace LinuxPlatform

} // namespace brindlecam
