#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>

namespace brindlecam {

// The one rule between points and pixels. A canvas is measured in points (reals), origin top-left,
// y down; its frozen picture in pixels, origin top-left. Pixels per point are taken on each axis
// from the two sizes, never from a nominal scale, so that canvas and picture always meet at both
// edges. Rectangles become pixels rounded outward. The global desktop is native pixels; ScreenInfo
// turns it into one screen's points.

/// Pixels per point on each axis.
struct PixelsPerPoint {
    qreal x = 1;
    qreal y = 1;
};

[[nodiscard]] PixelsPerPoint pixelsPerPoint(QSizeF canvasPoints, QSize imagePixels);

/// The smallest rectangle of whole units that holds `rect`. Edges within a millionth of a whole
/// unit count as whole, so that 100 points at scale 1.1 are 110 pixels and not 111.
[[nodiscard]] QRect roundedOutward(const QRectF& rect);

/// A rectangle of the canvas (points) in whole pixels of its picture, not clipped to the picture.
[[nodiscard]] QRect pixelRect(const QRectF& points, QSizeF canvasPoints, QSize imagePixels);

/// The pixel of the picture under a place on the canvas (points).
[[nodiscard]] QPoint pixelAt(QPointF point, QSizeF canvasPoints, QSize imagePixels);

/// `point` moved to the nearest place inside `rect`, edges included.
[[nodiscard]] QPointF clamped(QPointF point, const QRectF& rect);

/// The rectangle spanned by two corners given in any order.
[[nodiscard]] QRectF spanned(QPointF a, QPointF b);

} // namespace brindlecam
