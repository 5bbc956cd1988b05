#include "base/RepaintArea.h"

#include "base/Geometry.h"

#include <cmath>

namespace brindlecam {

namespace {

constexpr int kCoarsestGrid = 64; // points
constexpr qreal kTolerance = 1e-6;

// The smallest number of points that is a whole number of device pixels: 1 at scale 2, 4 at 1.25.
int gridPoints(qreal scale)
{
    for (int points = 1; points < kCoarsestGrid; ++points) {
        const qreal pixels = points * scale;
        if (std::abs(pixels - std::round(pixels)) < kTolerance)
            return points;
    }
    return kCoarsestGrid;
}

} // namespace

QRect repaintArea(const QRectF& points, qreal scale)
{
    if (points.isEmpty())
        return {};
    const qreal grid = gridPoints(scale);
    const QRect cells = roundedOutward(
        {points.x() / grid, points.y() / grid, points.width() / grid, points.height() / grid});
    const int step = static_cast<int>(grid);
    return {cells.topLeft() * step, cells.size() * step};
}

QRegion repaintBand(const QRectF& outer, qreal width, qreal scale)
{
    QRegion region;
    region += repaintArea({outer.left(), outer.top(), outer.width(), width}, scale);
    region += repaintArea({outer.left(), outer.bottom() - width, outer.width(), width}, scale);
    region += repaintArea({outer.left(), outer.top(), width, outer.height()}, scale);
    region += repaintArea({outer.right() - width, outer.top(), width, outer.height()}, scale);
    return region;
}

QRegion repaintAreaBetween(const QRectF& before, const QRectF& after, qreal scale)
{
    // What both cover keeps its pixels, except along the edges, where the grid takes in neighbours.
    const qreal grid = gridPoints(scale);
    const QRectF common = before.intersected(after).adjusted(grid, grid, -grid, -grid);
    const QRegion either = QRegion(repaintArea(before, scale)) + repaintArea(after, scale);
    if (!common.isValid())
        return either;
    const QPoint topLeft(static_cast<int>(std::ceil(common.left())),
                         static_cast<int>(std::ceil(common.top())));
    const QPoint bottomRight(static_cast<int>(std::floor(common.right())) - 1,
                             static_cast<int>(std::floor(common.bottom())) - 1);
    const int step = static_cast<int>(grid);
    const auto up = [step](int value) { return (value + step - 1) / step * step; };
    const auto down = [step](int value) { return value / step * step; };
    const QRect kept(QPoint(up(topLeft.x()), up(topLeft.y())),
                     QPoint(down(bottomRight.x() + 1) - 1, down(bottomRight.y() + 1) - 1));
    return kept.isValid() ? either - kept : either;
}

} // namespace brindlecam
