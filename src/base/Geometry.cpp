#include "base/Geometry.h"

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

constexpr qreal kWholeTolerance = 1e-6;

int roundedDown(qreal value)
{
    return static_cast<int>(std::floor(value + kWholeTolerance));
}

int roundedUp(qreal value)
{
    return static_cast<int>(std::ceil(value - kWholeTolerance));
}

} // namespace

PixelsPerPoint pixelsPerPoint(QSizeF canvasPoints, QSize imagePixels)
{
    if (canvasPoints.isEmpty())
        return {};
    return {imagePixels.width() / canvasPoints.width(),
            imagePixels.height() / canvasPoints.height()};
}

QRect roundedOutward(const QRectF& rect)
{
    const QPoint topLeft(roundedDown(rect.left()), roundedDown(rect.top()));
    return {topLeft, QSize(std::max(0, roundedUp(rect.right()) - topLeft.x()),
                           std::max(0, roundedUp(rect.bottom()) - topLeft.y()))};
}

QRect pixelRect(const QRectF& points, QSizeF canvasPoints, QSize imagePixels)
{
    const PixelsPerPoint ratio = pixelsPerPoint(canvasPoints, imagePixels);
    return roundedOutward({points.x() * ratio.x, points.y() * ratio.y, points.width() * ratio.x,
                           points.height() * ratio.y});
}

QPoint pixelAt(QPointF point, QSizeF canvasPoints, QSize imagePixels)
{
    const PixelsPerPoint ratio = pixelsPerPoint(canvasPoints, imagePixels);
    return {roundedDown(point.x() * ratio.x), roundedDown(point.y() * ratio.y)};
}

QPointF clamped(QPointF point, const QRectF& rect)
{
    return {std::clamp(point.x(), rect.left(), rect.right()),
            std::clamp(point.y(), rect.top(), rect.bottom())};
}

QRectF spanned(QPointF a, QPointF b)
{
    return {QPointF(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
            QSizeF(std::abs(a.x() - b.x()), std::abs(a.y() - b.y()))};
}

} // namespace brindlecam
