#pragma once

#include "platform/PortOffers.h"

namespace brindlecam {

/// What is not Linux's alone: signals, text recognition, the C library's allocator.
namespace UnixPlatform {

/// Before the application object is made.
void prepare();

void offer(PortOffers& offers);

} // namespace UnixPlatform

} // namespace brindlecam
