#pragma once

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <vector>

namespace brindlecam {

struct ScreenInfo;
struct WheelDelta;

/// Where a pin lies and how large it is. Rectangles are native pixels of the global desktop, as
/// reals, so that many small steps add up.
namespace PinGeometry {

/// What one turn of the wheel multiplies a pin's width by: from 0.8 to 1.2.
[[nodiscard]] qreal factor(const WheelDelta& turn);

/// `frame` made larger or smaller around its centre. `base` is the capture's size on this screen:
/// the width stays between a fifth and three times its width, the height follows its proportions,
/// whatever those of the frame are.
[[nodiscard]] QRectF zoomed(const QRectF& frame, QSizeF base, qreal factor);

/// `frame` times `ratio`, with the place `fixed` of it staying where it is.
[[nodiscard]] QRectF scaled(const QRectF& frame, QPointF fixed, qreal ratio);

/// The whole pixels of a frame; never empty.
[[nodiscard]] QRect onPixels(const QRectF& frame);

/// The screen with the frame's centre, else the nearest one; none without screens.
[[nodiscard]] std::optional<ScreenInfo> screenOf(const QRectF& frame,
                                                 const std::vector<ScreenInfo>& screens);

/// `frame` where a hand can get at it: unchanged while enough of it can be seen on some screen,
/// else moved onto the nearest one.
[[nodiscard]] QRectF reachable(const QRectF& frame, const std::vector<ScreenInfo>& screens);

} // namespace PinGeometry

} // namespace brindlecam
