#include "x11/ports/Frames.h"

#include "platform/x11/grab/X11RegionFrames.h"

namespace brindlecam::test {

namespace {

using Opened = Result<std::unique_ptr<RegionFrames>>;

std::unique_ptr<RegionFrames> taken(Opened opened)
{
    if (!opened) {
        qWarning("no frames: %s", qPrintable(opened.error().message));
        return nullptr;
    }
    return std::move(opened).value();
}

} // namespace

std::unique_ptr<RegionFrames> openFrames(const QRect& native, const RegionOptions& options)
{
    return taken(X11RegionFrames::open(native, options));
}

std::unique_ptr<RegionFrames> openFrames(const QRect& native, std::chrono::milliseconds patience)
{
    return taken(X11RegionFrames::open(native, {}, patience));
}

std::future<NextFrame> readNext(RegionFrames& frames)
{
    return std::async(std::launch::async, [&frames] { return frames.next(); });
}

NextFrame awaitNext(RegionFrames& frames)
{
    return readNext(frames).get();
}

QImage nextImage(RegionFrames& frames)
{
    const NextFrame next = awaitNext(frames);
    if (!next || !next.value()) {
        qWarning("no frame: %s", next ? "stopped" : qPrintable(next.error().message));
        return {};
    }
    return next.value()->image;
}

} // namespace brindlecam::test
