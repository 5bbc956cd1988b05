#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSizeF>

class QPainter;

namespace brindlecam {

/// The hint of one screen, painted once in that screen's pixels: shaping its text takes longer than
/// copying it at each session's start.
class HintPicture final {
public:
    /// `canvas` is the screen's size in points, `scale` its pixels per point.
    HintPicture(QSizeF canvas, qreal scale);

    /// Paints it pixel by pixel, whatever the painter's scale.
    void paint(QPainter& painter) const;

    /// Its place on the screen, in pixels, and what belongs there.
    [[nodiscard]] QRect pixels() const { return {m_pixel, m_image.size()}; }
    [[nodiscard]] const QImage& image() const { return m_image; }

private:
    const qreal m_scale;
    QPoint m_pixel; ///< its place on the screen, in pixels
    QImage m_image;
};

} // namespace brindlecam
