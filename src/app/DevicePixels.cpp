#include "app/DevicePixels.h"

#include "base/Geometry.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam {

DevicePixels::DevicePixels(QPainter& painter)
    : m_painter(painter)
    , m_scale(painter.device()->devicePixelRatioF() * painter.transform().m11())
{
    m_painter.save();
    const QTransform device = painter.deviceTransform();
    const QPointF origin(device.dx(), device.dy());
    m_shift = origin - origin.toPoint();
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
    const QPoint topLeft = (points.topLeft() * m_scale + m_shift).toPoint();
    const QPoint end = (points.bottomRight() * m_scale + m_shift).toPoint();
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
