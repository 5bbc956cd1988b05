#include "look/DevicePixels.h"

#include "base/Geometry.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

/// Halves go the same way on both sides of zero: a place within a widget is cut to the same pixels
/// wherever its origin lies.
QPoint nearestPixel(QPointF pixels)
{
    return {static_cast<int>(std::floor(pixels.x() + 0.5)),
            static_cast<int>(std::floor(pixels.y() + 0.5))};
}

} // namespace

DevicePixels::DevicePixels(QPainter& painter)
    : m_painter(painter)
    , m_scale(painter.device()->devicePixelRatioF() * painter.transform().m11())
{
    m_painter.save();
    const QTransform device = painter.deviceTransform();
    const QPointF origin(device.dx(), device.dy());
    m_shift = origin - nearestPixel(origin);
    m_painter.scale(1 / m_scale, 1 / m_scale);
    m_painter.translate(-m_shift);
}

DevicePixels::~DevicePixels()
{
    m_painter.restore();
}

int DevicePixels::lineWidth(qreal points) const
{
    return std::max(1, qRound(points * m_scale));
}

QRect DevicePixels::nearest(const QRectF& points) const
{
    const QPoint topLeft = nearestPixel(points.topLeft() * m_scale + m_shift);
    const QPoint end = nearestPixel(points.bottomRight() * m_scale + m_shift);
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

QRect DevicePixels::outward(const QRectF& points) const
{
    return roundedOutward({points.topLeft() * m_scale + m_shift, points.size() * m_scale});
}

QPointF DevicePixels::corner(QPoint pixel) const
{
    return (QPointF(pixel) - m_shift) / m_scale;
}

} // namespace brindlecam
