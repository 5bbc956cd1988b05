#pragma once

#include "base/Geometry.h"

#include <QImage>

#include <optional>
#include <vector>

class QPainter;

namespace brindlecam {

class PixelGrid;

/// A part of a picture made unreadable: averaged in square cells that start at its lower left
/// corner. Only one pixel per cell is kept, so a patch is cheap to copy and to hold. A value;
/// drawing it is safe on any thread.
class Pixelation final {
public:
    /// Pixelates the part of `frozen` inside `pixels`, clipped to the picture. Cells measure
    /// `cellPixels` (1 to 256, fractions count); those cut off by the right and the upper edge are
    /// averaged as if the pixels at the edge went on. None when `pixels` is narrower or lower than
    /// two, or lies outside the picture.
    [[nodiscard]] static std::optional<Pixelation> of(const QImage& frozen, const QRect& pixels,
                                                      qreal cellPixels);

    /// The side of a cell on a picture of this density: 9 points, at least 6 pixels.
    [[nodiscard]] static qreal cellPixels(PixelsPerPoint ratio);

    /// Draws the whole patch stretched into `target` (the painter's coordinates; not rotated). Each
    /// device pixel shows one cell, whatever the painter's hints: nothing is smoothed, and pixels
    /// whose centre lies outside the target stay as they are.
    void draw(QPainter& painter, const QRectF& target) const;

    /// Size of the pixelated part, in pixels.
    [[nodiscard]] QSize size() const { return m_size; }
    /// One pixel per cell, the upper left one first.
    [[nodiscard]] const QImage& cells() const { return m_cells; }

private:
    void drawRow(const PixelGrid& grid, int row, const std::vector<QRect>& columns, int top,
                 int bottom) const;

    Pixelation(QImage cells, QSize size, qreal cell);

    QImage m_cells;
    QSize m_size;
    qreal m_cell = 1; ///< side of a cell in pixels of the picture
};

} // namespace brindlecam
