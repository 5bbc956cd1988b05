#include "canvas/DimView.h"

#include "base/Geometry.h"
#include "pictures/Dimming.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam {

DimView::DimView(QImage image, QSizeF canvas)
    : m_image(std::move(image))
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
        paintDimmed(painter, rect);
    for (const QRect& rect : bright)
        painter.drawImage(rect.topLeft(), m_image, rect);
    painter.restore();
}

// A few rows at a time stay in the cache, and no second picture of the screen is ever held.
void DimView::paintDimmed(QPainter& painter, const QRect& pixels) const
{
    constexpr int kRows = 32;
    for (int y = pixels.top(); y <= pixels.bottom(); y += kRows) {
        const QRect rows(pixels.left(), y, pixels.width(),
                         std::min(kRows, pixels.bottom() + 1 - y));
        painter.drawImage(rows.topLeft(), Dimming::dimmedCopy(m_image, rows));
    }
}

} // namespace brindlecam
