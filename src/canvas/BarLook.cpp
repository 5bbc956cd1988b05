#include "canvas/BarLook.h"

#include "look/DevicePixels.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>

namespace brindlecam::BarLook {

namespace {

// Points.
constexpr qreal kGroundRadius = 9;
constexpr qreal kBorderWidth = 1;
constexpr qreal kFocusRingWidth = 2;

const QColor kGround = QColor::fromRgbF(0.12F, 0.12F, 0.12F, 0.94F);
const QColor kBorder = QColor::fromRgbF(1, 1, 1, 0.12F);

/// Fills the band of this width (pixels) along the inside of a rounded rectangle.
void fillBand(QPainter& painter, const QRect& outer, qreal radius, int width, const QColor& color)
{
    QPainterPath band;
    band.addRoundedRect(outer, radius, radius);
    band.addRoundedRect(outer.adjusted(width, width, -width, -width), radius - width,
                        radius - width);
    painter.fillPath(band, color);
}

} // namespace

void paintGround(QPainter& painter, const QRectF& rect)
{
    const DevicePixels pixels(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect outer = pixels.nearest(rect);
    const qreal radius = pixels.length(kGroundRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kGround);
    painter.drawRoundedRect(outer, radius, radius);
    fillBand(painter, outer, radius, pixels.lineWidth(kBorderWidth), kBorder);
}

void paintFocusRing(QPainter& painter, const QRectF& rect)
{
    const DevicePixels pixels(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    fillBand(painter, pixels.nearest(rect), pixels.length(kControlRadius),
             pixels.lineWidth(kFocusRingWidth), Qt::white);
}

} // namespace brindlecam::BarLook
