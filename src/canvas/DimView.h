#pragma once

#include <QImage>
#include <QRectF>
#include <QRegion>

class QPainter;

namespace brindlecam {

/// The frozen screen, as it is in the hole and dimmed around it. The picture is pixels, the hole is
/// points.
class DimView final {
public:
    /// A 32-bit picture; `canvas` is its size in points.
    DimView(QImage image, QSizeF canvas);

    [[nodiscard]] const QImage& image() const { return m_image; }

    /// An empty rectangle: everything is dimmed.
    void setHole(const QRectF& hole);
    [[nodiscard]] const QRectF& hole() const { return m_hole; }

    /// Paints the part inside `exposed` (points) pixel by pixel, whatever the painter's scale.
    void paint(QPainter& painter, const QRegion& exposed) const;

private:
    void paintDimmed(QPainter& painter, const QRect& pixels) const;

    QImage m_image;
    QSizeF m_canvas;
    QRectF m_hole;
};

} // namespace brindlecam
