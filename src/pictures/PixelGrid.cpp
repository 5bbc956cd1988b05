#include "pictures/PixelGrid.h"

#include "base/Geometry.h"

#include <QPainter>

#include <cmath>

namespace brindlecam {

namespace {

constexpr qreal kFinestStep = 1.0 / (1 << 24);

/// Without what is left of multiplying and dividing by a fractional scale.
qreal cleaned(qreal value)
{
    return std::round(value / kFinestStep) * kFinestStep;
}

} // namespace

PixelGrid::PixelGrid(QPainter& painter)
    : m_painter(painter)
{
    painter.save();
    const QTransform before = painter.deviceTransform();
    painter.resetTransform();
    const QTransform device = painter.deviceTransform();
    // No moves here: with a trace of a pixel left over, Qt 6.4 drops rows at the end of the clip.
    painter.scale(1 / device.m11(), 1 / device.m22());

    const QPointF origin(std::floor(cleaned(before.dx())), std::floor(cleaned(before.dy())));
    m_toPixels = QTransform(cleaned(before.m11()), 0, 0, cleaned(before.m22()),
                            cleaned(before.dx() - origin.x()), cleaned(before.dy() - origin.y()));
    m_origin = (origin - QPointF(device.dx(), device.dy())).toPoint();
}

PixelGrid::~PixelGrid()
{
    m_painter.restore();
}

QRect PixelGrid::shown(const QRect& pixels) const
{
    if (!m_painter.hasClipping())
        return pixels;
    return roundedOutward(m_painter.clipBoundingRect()).translated(-m_origin) & pixels;
}

void PixelGrid::draw(const QImage& picture, QPoint topLeft) const
{
    m_painter.drawImage(m_origin + topLeft, picture);
}

} // namespace brindlecam
