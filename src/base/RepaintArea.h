#pragma once

#include <QRectF>
#include <QRegion>

namespace brindlecam {

/// Grows a rectangle of a widget (points) to one whose edges lie on whole device pixels at this
/// scale, so that a partial repaint at a fractional scale leaves no stale line at its border. At
/// scales without such a grid nearby the answer is much larger, never smaller.
[[nodiscard]] QRect repaintArea(const QRectF& points, qreal scale);

/// The band of this width along the inside of the edges, as repaintArea() of each side.
[[nodiscard]] QRegion repaintBand(const QRectF& outer, qreal width, qreal scale);

/// What differs on the screen when the undimmed hole moves: the area that only one of them covers.
[[nodiscard]] QRegion repaintAreaBetween(const QRectF& before, const QRectF& after, qreal scale);

} // namespace brindlecam
