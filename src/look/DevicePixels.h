#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>

class QPainter;

namespace brindlecam {

/// Paints on whole device pixels: as long as one lives, the painter counts in pixels of its device
/// instead of points, so that lines stay sharp at fractional scales. Its origin is the pixel corner
/// nearest to the painter's own: a child widget may begin in the middle of a pixel. Restores the
/// painter's state when it goes. For painters that are not rotated.
class DevicePixels final {
public:
    explicit DevicePixels(QPainter& painter);
    ~DevicePixels();

    /// The width of a line of so many points in pixels: whole, and at least one.
    [[nodiscard]] int lineWidth(qreal points) const;
    /// A length of so many points in pixels, not rounded.
    [[nodiscard]] qreal length(qreal points) const { return points * m_scale; }
    /// Each edge on the pixel edge nearest to it.
    [[nodiscard]] QRect nearest(const QRectF& points) const;
    /// The smallest rectangle of whole pixels around it.
    [[nodiscard]] QRect outward(const QRectF& points) const;
    /// Where the top-left corner of a pixel lies, in points.
    [[nodiscard]] QPointF corner(QPoint pixel) const;

private:
    QPainter& m_painter;
    qreal m_scale = 1; ///< pixels per point
    QPointF m_shift;   ///< from our origin to the painter's, in pixels: half of one at most
};

} // namespace brindlecam
