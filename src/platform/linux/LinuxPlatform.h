#pragma once

#include "platform/Platform.h"

namespace brindlecam {

/// What Linux desktops have in common, whatever draws their windows.
namespace LinuxPlatform {

/// Before the application object is made.
void prepare();

/// The kind of tray that `platform` knows already stays beside those of its own.
void add(Platform& platform);

} // namespace LinuxPlatform

} // namespace brindlecam
