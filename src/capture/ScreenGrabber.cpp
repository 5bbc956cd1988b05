#include "capture/ScreenGrabber.h"

#include "base/Text.h"

namespace brindlecam::ScreenGrabber {

// NOLINTNEXTLINE(performance-unnecessary-value-param): see the header
void capture(Grabber& grabber, std::vector<ScreenInfo> screens, QObject* context,
             std::function<void(Result<std::vector<Shot>>)> done)
{
    grabber.grabScreens(screens, context,
                        [done = std::move(done)](Result<std::vector<Shot>> grabbed) {
                            if (grabbed && grabbed.value().empty())
                                done(Error{text("No hay ninguna pantalla que capturar.")});
                            else
                                done(std::move(grabbed));
                        });
}

} // namespace brindlecam::ScreenGrabber
