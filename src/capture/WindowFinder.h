#pragma once

#include "base/ScreenInfo.h"
#include "platform/WindowList.h"

#include <cstdint>
#include <vector>

namespace brindlecam {

/// Which windows a click may take.
namespace WindowFinder {

/// Frames of ordinary windows of other programs, frontmost first, native pixels: in layer 0, not
/// nearly transparent, at least 60 × 40 points on the screen that shows them.
[[nodiscard]] std::vector<QRect> frontToBackRects(const std::vector<WindowEntry>& windows,
                                                  const std::vector<ScreenInfo>& screens,
                                                  std::int64_t ownPid);

/// The part of each frame on one screen, in that screen's points, order kept.
[[nodiscard]] std::vector<QRectF> onScreen(const std::vector<QRect>& frames,
                                           const ScreenInfo& screen);

} // namespace WindowFinder

} // namespace brindlecam
