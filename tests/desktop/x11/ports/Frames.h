#pragma once

#include "platform/RegionFrames.h"

#include <QImage>
#include <QRect>

#include <chrono>
#include <future>
#include <memory>

namespace brindlecam::test {

/// Frames of a region, opened as the port does it, on the server that DISPLAY names; null, with a
/// warning in the log, when it is refused.
[[nodiscard]] std::unique_ptr<RegionFrames> openFrames(const QRect& native,
                                                       const RegionOptions& options = {});
/// The same with another patience.
[[nodiscard]] std::unique_ptr<RegionFrames> openFrames(const QRect& native,
                                                       std::chrono::milliseconds patience);

using NextFrame = Result<std::optional<RegionFrame>>;

/// A frame that is read on another thread.
[[nodiscard]] std::future<NextFrame> readNext(RegionFrames& frames);
/// The same while this thread waits for it and does nothing else.
[[nodiscard]] NextFrame awaitNext(RegionFrames& frames);
/// Its picture; null, with a warning in the log, when there is none.
[[nodiscard]] QImage nextImage(RegionFrames& frames);

} // namespace brindlecam::test
