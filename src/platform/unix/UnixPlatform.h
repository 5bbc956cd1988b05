#pragma once

#include "platform/Platform.h"

namespace brindlecam {

/// What is not Linux's alone: signals, text recognition, the C library's allocator.
namespace UnixPlatform {

/// Before the application object is made.
void prepare();
void add(Platform& platform);

} // namespace UnixPlatform

} // namespace brindlecam
