#pragma once

#include "platform/PortOffers.h"
#include "platform/Session.h"

namespace brindlecam {

/// What Linux desktops have in common, whatever draws their windows.
namespace LinuxPlatform {

/// Before the application object is made.
void prepare();
/// Adds what the message bus can tell, once somebody asks.
void look(Session& session);

void offer(PortOffers& offers);
/// Sets what is no port.
void describe(Platform& platform);

} // namespace LinuxPlatform

} // namespace brindlecam
