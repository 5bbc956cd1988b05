#include "canvas/DimView.h"

#include "base/Geometry.h"

#include <QPainter>

namespace brindlecam {

DimView::DimView(QImage image, QImage dimmed, QSizeF canvas)
    : m_image(std::move(image))
    , m_dimmed(std::move(dimmed))
    , m_canvas(canvas)
{
}

void DimView::setHole(const QRectF& hole)
{
    m_hole = hole;
}

void DimView::paint(QPainter& painter, const QRegion& exposed) const
{
    QRegion pixels;
    for (const QRect& rect : exposed)
        pixels += pixelRect(rect, m_canvas, m_image.size());
    pixels &= m_image.rect();
    const QRegion bright =
        m_hole.isEmpty() ? QRegion() : pixels & pixelRect(m_hole, m_canvas, m_image.size());

    painter.save();
    // The painter counts in points; one pixel of the picture is one pixel of the screen.
    const PixelsPerPoint ratio = pixelsPerPoint(m_canvas, m_image.size());
    painter.scale(1 / ratio.x, 1 / ratio.y);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& rect : pixels - bright)
        painter.drawImage(rect.topLeft(), m_dimmed, rect);
    for (const QRect& rect : bright)
        painter.drawImage(rect.topLeft(), m_image, rect);
    painter.restore();
}

} // namespace brindlecam
