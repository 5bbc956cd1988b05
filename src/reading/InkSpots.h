#pragma once

#include "reading/StopRequest.h"

#include <QImage>
#include <QRect>

#include <vector>

namespace brindlecam {

/// Connected dark spots of a grey picture: letters, dots, icons. Any thread.
namespace InkSpots {

/// At this value and below a pixel is ink.
inline constexpr int kInk = 128;

/// The boxes of all spots, 8-connected, in pixels, in the order of their first pixels.
[[nodiscard]] std::vector<QRect> boxes(const QImage& grey, StopRequest stop = {});

} // namespace InkSpots

} // namespace brindlecam
