#include "desktop/support/Desktop.h"

#include "desktop/support/x11/X11Desktop.h"

namespace brindlecam::desktop {

std::unique_ptr<Desktop> Desktop::start(const DesktopOptions& options)
{
    return std::make_unique<X11Desktop>(options);
}

} // namespace brindlecam::desktop
