#include "platform/x11/grab/X11Grabber.h"

#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/grab/X11RegionFrames.h"

#include <utility>

namespace brindlecam {

X11Grabber::X11Grabber(std::shared_ptr<ServerPixels> pixels)
    : m_reader(std::move(pixels))
{
}

void X11Grabber::grabScreens(const std::vector<ScreenInfo>& screens, QObject*, Done done)
{
    const QRect all = RootReader::desktop();
    std::vector<GrabbedScreen> grabbed;
    grabbed.reserve(screens.size());
    for (const auto& screen : screens) {
        if (screen.native.isEmpty() || !all.contains(screen.native))
            continue;
        auto picture = m_reader.readOnDesktop(screen.native);
        if (!picture) {
            done(picture.error());
            return;
        }
        grabbed.push_back({screen, std::move(picture).value()});
    }
    done(std::move(grabbed));
}

void X11Grabber::openRegion(const QRect& native, const RegionOptions& options, QObject*,
                            Opened opened)
{
    opened(X11RegionFrames::open(native, options));
}

} // namespace brindlecam
