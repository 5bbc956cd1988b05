#pragma once

#include <QRect>

#include <vector>

namespace brindlecam::DashedRing {

/// The strokes of the dashed line around a captured rectangle, each a rectangle of whole pixels:
/// what they cover is sharp at every scale, and a window can be cut to it. 2 points wide, 8 on and
/// 5 off, between 1 and 3 points outside of the rectangle; never inside. Pure; pixels of whatever
/// space `captured` is in, `scale` of them to a point.
[[nodiscard]] std::vector<QRect> strokesAround(const QRect& captured, qreal scale);

} // namespace brindlecam::DashedRing
