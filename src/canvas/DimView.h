#pragma once

#include <QImage>
#include <QRectF>
#include <QRegion>

class QPainter;

namespace brindlecam {

/// The frozen screen in two pictures, as it is and dimmed: the hole shows the first, everything
/// around it the second. No blending happens while painting. Images are pixels, the hole is points.
class DimView final {
public:
    /// Both pictures have one size, in pixels; `canvas` is their size in points.
    DimView(QImage image, QImage dimmed, QSizeF canvas);

    [[nodiscard]] const QImage& image() const { return m_image; }

    /// An empty rectangle: everything is dimmed.
    void setHole(const QRectF& hole);
    [[nodiscard]] const QRectF& hole() const { return m_hole; }

    /// Paints the part inside `exposed` (points) pixel by pixel, whatever the painter's scale.
    void paint(QPainter& painter, const QRegion& exposed) const;

private:
    QImage m_image;
    QImage m_dimmed;
    QSizeF m_canvas;
    QRectF m_hole;
};

} // namespace brindlecam
