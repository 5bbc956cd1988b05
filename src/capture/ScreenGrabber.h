#pragma once

#include "platform/Grabber.h"

#include <functional>
#include <vector>

namespace brindlecam {

/// A screen and its whole picture in pixels.
using Shot = GrabbedScreen;

/// Freezes screens. Keeps no state: everything is asked anew at every call. Main thread.
namespace ScreenGrabber {

/// Pictures of these screens in this order; screens that are gone are left out. A list without a
/// picture is a failure like any other. Called off when `context` goes. By value: an answer within
/// the call may end whoever has the list.
void capture(Grabber& grabber, std::vector<ScreenInfo> screens, QObject* context,
             std::function<void(Result<std::vector<Shot>>)> done);

} // namespace ScreenGrabber

} // namespace brindlecam
