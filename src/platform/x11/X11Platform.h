#pragma once

#include "platform/Platform.h"

namespace brindlecam {

/// The ports on an X server.
namespace X11Platform {

/// Says why there is none for us, or settles that Qt uses it. Before the application object is
/// made.
[[nodiscard]] std::optional<Error> prepare();

/// Whether Qt shows its windows on an X server. The application object must exist, as for add().
[[nodiscard]] bool isSpoken();
void add(Platform& platform);

} // namespace X11Platform

} // namespace brindlecam
