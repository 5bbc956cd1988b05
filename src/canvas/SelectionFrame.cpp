#include "canvas/SelectionFrame.h"

#include "base/RepaintArea.h"
#include "canvas/Selection.h"
#include "look/DevicePixels.h"
#include "preferences/Config.h"

#include <QPainter>

namespace brindlecam::SelectionFrame {

namespace {

// Points.
constexpr qreal kBorderWidth = 1;
constexpr qreal kDash = 5;
constexpr qreal kGap = 4;
constexpr qreal kHandleSide = 7;                       // to the middle of its line
constexpr qreal kHoverWidth = 2;                       // inside the window's edges
constexpr qreal kCoveredReach = kHandleSide / 2 + 1.5; // half a handle and its line

/// Fills the band of this width along the inside of the edges.
void fillBand(QPainter& painter, const QRect& outer, int width, const QColor& color)
{
    const QRect inner = outer.adjusted(width, width, -width, -width);
    for (const QRect& side : QRegion(outer) - inner)
        painter.fillRect(side, color);
}

} // namespace

QRegion covered(const QRectF& selection, qreal scale)
{
    if (selection.isEmpty())
        return {};
    const QRectF outer =
        selection.adjusted(-kCoveredReach, -kCoveredReach, kCoveredReach, kCoveredReach);
    return repaintBand(outer, 2 * kCoveredReach, scale);
}

void paintBorder(QPainter& painter, const QRectF& selection)
{
    const DevicePixels pixels(painter);
    // Outside of the selection, whose pixels are those of the picture.
    const int width = pixels.lineWidth(kBorderWidth);
    const QRect outer = pixels.outward(selection).adjusted(-width, -width, width, width);
    fillBand(painter, outer, width, Qt::white);

    QPen dashes(Config::leafGreen, width);
    dashes.setJoinStyle(Qt::MiterJoin);
    dashes.setCapStyle(Qt::FlatCap);
    // The pattern counts in widths of the line.
    dashes.setDashPattern({static_cast<qreal>(pixels.lineWidth(kDash)) / width,
                           static_cast<qreal>(pixels.lineWidth(kGap)) / width});
    const qreal half = width / 2.0;
    painter.setRenderHint(QPainter::Antialiasing, false); // dashes may end within a pixel
    painter.setBrush(Qt::NoBrush);
    painter.setPen(dashes);
    painter.drawRect(QRectF(outer).adjusted(half, half, -half, -half));
}

void paintHandles(QPainter& painter, const QRectF& selection)
{
    const DevicePixels pixels(painter);
    const int width = pixels.lineWidth(kBorderWidth);
    for (const Handle handle : kHandles) {
        QRectF square(0, 0, kHandleSide + kBorderWidth, kHandleSide + kBorderWidth);
        square.moveCenter(Selection::centre(handle, selection));
        const QRect outer = pixels.nearest(square);
        painter.fillRect(outer, Qt::white);
        fillBand(painter, outer, width, Config::leafGreen);
    }
}

void paintHoveredWindow(QPainter& painter, const QRectF& window)
{
    const DevicePixels pixels(painter);
    fillBand(painter, pixels.outward(window), pixels.lineWidth(kHoverWidth), Config::leafGreen);
}

} // namespace brindlecam::SelectionFrame
