#pragma once

#include "platform/PortOffers.h"
#include "platform/Session.h"

namespace brindlecam {

/// The ports on an X server.
namespace X11Platform {

/// What Qt calls it.
inline constexpr const char* kQtName = "xcb";

/// Connects to the server that DISPLAY names. Before the application object is made: Qt ends the
/// process when it can't.
[[nodiscard]] Session::XServer askServer();

/// Whether Qt's windows may be that server's.
[[nodiscard]] bool isOffered(const Session& session);

void offer(PortOffers& offers);

} // namespace X11Platform

} // namespace brindlecam
