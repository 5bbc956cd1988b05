#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QTransform>

class QImage;
class QPainter;

namespace brindlecam {

/// The pixels that a painter paints on, counted so that the same place gets the same numbers in
/// every part of a picture: a part that is painted as a picture of its own, moved by whole pixels,
/// comes out as it would within the whole. As long as one lives, the painter counts in pixels of
/// its device; its state is restored when this goes. For painters that are not rotated.
class PixelGrid final {
public:
    explicit PixelGrid(QPainter& painter);
    ~PixelGrid();

    /// What the painter counted in before, in pixels of the grid.
    [[nodiscard]] const QTransform& toPixels() const { return m_toPixels; }
    /// What of these pixels of the grid the painter's clip may leave.
    [[nodiscard]] QRect shown(const QRect& pixels) const;
    /// Draws a picture pixel by pixel, its upper left corner on this pixel of the grid.
    void draw(const QImage& picture, QPoint topLeft) const;

private:
    QPainter& m_painter;
    QTransform m_toPixels;
    QPoint m_origin; ///< of the grid, in pixels of the device
};

} // namespace brindlecam
