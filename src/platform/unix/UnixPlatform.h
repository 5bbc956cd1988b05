#pragma once

#include "platform/Platform.h"

namespace brindlecam {

/// What Linux and macOS have in common: signals, text recognition, the C library's allocator.
namespace UnixPlatform {

/// Before the application object is made.
void prepare();
void add(Platform& platform);

} // namespace UnixPlatform

} // namespace brindlecam
