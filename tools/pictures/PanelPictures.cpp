#include "PanelPictures.h"

#include "Photographer.h"
#include "capture/Countdown.h"
#include "capture/ResultToast.h"
#include "notices/Toast.h"
#include "platform/Platform.h"

namespace brindlecam::pictures {

namespace {

void takeToasts(Photographer& photographer)
{
    Platform& platform = photographer.platform();
    Toast toast(*platform.displays, *platform.panels, *platform.compositing);
    const auto show = [&toast](Fate::Copy file) {
        const Fate fate{.clipboard = ClipboardFate::taken, .file = file};
        toast.show(ResultToast::message(ResultToast::Kind::area, fate).value_or(QString()));
    };
    show(Fate::Copy::done);
    photographer.take(QStringLiteral("toast-short"));
    show(Fate::Copy::failed);
    photographer.take(QStringLiteral("toast-long"));
    toast.suspend();
    photographer.rest();
}

void takeCountdown(Photographer& photographer)
{
    Platform& platform = photographer.platform();
    // Slow enough for the camera.
    Countdown countdown(*platform.displays, *platform.panels, *platform.compositing,
                        {.tick = std::chrono::seconds(3), .handOff = std::chrono::seconds(0)});
    bool done = false;
    countdown.run(3, [&done] { done = true; });
    for (int seconds = 3; seconds >= 1; --seconds) {
        photographer.await(QStringLiteral("the countdown"),
                           [&] { return countdown.remaining() <= seconds; });
        photographer.take(QStringLiteral("countdown-%1").arg(seconds));
    }
    photographer.await(QStringLiteral("the end of the countdown"), [&] { return done; });
    photographer.rest();
}

} // namespace

void takePanelPictures(Photographer& photographer)
{
    takeToasts(photographer);
    takeCountdown(photographer);
}

} // namespace brindlecam::pictures
