#pragma once

namespace brindlecam::soak {

/// Whether a walk can fail at all: breaks on purpose what must hold, and tells of everything that
/// is not seen. True when all of it is.
[[nodiscard]] bool seesEverySabotage();

} // namespace brindlecam::soak
