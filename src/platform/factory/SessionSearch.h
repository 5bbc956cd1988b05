#pragma once

#include "platform/Session.h"

namespace brindlecam {

/// What the environment alone says about the session.
[[nodiscard]] Session sessionOfEnvironment();

/// Whether anything comes of asking the X server that it names: one inside of Wayland may have to
/// be started to answer, and nobody could use it.
[[nodiscard]] bool isWorthAskingXServer(const Session& session);

} // namespace brindlecam
