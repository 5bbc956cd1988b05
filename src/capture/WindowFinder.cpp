#include "capture/WindowFinder.h"

#include <algorithm>

namespace brindlecam::WindowFinder {

namespace {

constexpr double kNearlyTransparent = 0.05;
constexpr QSizeF kSmallest(60, 40); // points

// The scale of the screen that shows most of the frame; none when no screen shows any of it.
std::optional<qreal> scaleOf(const QRect& frame, const std::vector<ScreenInfo>& screens)
{
    std::optional<qreal> scale;
    qint64 most = 0;
    for (const ScreenInfo& screen : screens) {
        const QRect shown = frame.intersected(screen.native);
        const qint64 area = qint64(shown.width()) * shown.height();
        if (!shown.isEmpty() && area > most) {
            most = area;
            scale = screen.scale;
        }
    }
    return scale;
}

bool isTarget(const WindowEntry& window, const std::vector<ScreenInfo>& screens,
              std::int64_t ownPid)
{
    if (window.layer != 0 || window.pid == ownPid)
        return false;
    if (window.opacity && *window.opacity <= kNearlyTransparent)
        return false;
    const auto scale = scaleOf(window.frame, screens);
    return scale && window.frame.width() >= kSmallest.width() * *scale &&
           window.frame.height() >= kSmallest.height() * *scale;
}

} // namespace

std::vector<QRect> frontToBackRects(const std::vector<WindowEntry>& windows,
                                    const std::vector<ScreenInfo>& screens, std::int64_t ownPid)
{
    std::vector<QRect> frames;
    for (const WindowEntry& window : windows) {
        if (isTarget(window, screens, ownPid))
            frames.push_back(window.frame);
    }
    return frames;
}

std::vector<QRectF> onScreen(const std::vector<QRect>& frames, const ScreenInfo& screen)
{
    std::vector<QRectF> rects;
    for (const QRect& frame : frames) {
        if (const QRectF rect = screen.toPoints(frame); !rect.isEmpty())
            rects.push_back(rect);
    }
    return rects;
}

} // namespace brindlecam::WindowFinder
