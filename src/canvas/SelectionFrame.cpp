#include "canvas/SelectionFrame.h"

#include "app/Config.h"
#include "canvas/RepaintArea.h"
#include "canvas/Selection.h"

#include <QPainter>

namespace brindlecam::SelectionFrame {

namespace {

constexpr qreal kBorderOutset = 0.5;
constexpr qreal kHandleSide = 7;
constexpr qreal kHoverInset = 1;
constexpr qreal kHoverWidth = 2;
constexpr qreal kCoveredReach = kHandleSide / 2 + 1.5; // half a handle and its line

QPen linePen(const QColor& color, qreal width)
{
    QPen pen(color, width);
    pen.setJoinStyle(Qt::MiterJoin);
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

} // namespace

QRegion covered(const QRectF& selection, qreal scale)
{
    if (selection.isEmpty())
        return {};
    const QRectF outer =
        selection.adjusted(-kCoveredReach, -kCoveredReach, kCoveredReach, kCoveredReach);
    constexpr qreal kBand = 2 * kCoveredReach;
    QRegion region;
    region += repaintArea({outer.left(), outer.top(), outer.width(), kBand}, scale);
    region += repaintArea({outer.left(), outer.bottom() - kBand, outer.width(), kBand}, scale);
    region += repaintArea({outer.left(), outer.top(), kBand, outer.height()}, scale);
    region += repaintArea({outer.right() - kBand, outer.top(), kBand, outer.height()}, scale);
    return region;
}

void paintBorder(QPainter& painter, const QRectF& selection)
{
    const QRectF line =
        selection.adjusted(-kBorderOutset, -kBorderOutset, kBorderOutset, kBorderOutset);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(linePen(Qt::white, 1));
    painter.drawRect(line);
    QPen dashes = linePen(Config::leafGreen, 1);
    dashes.setDashPattern({5, 4});
    painter.setPen(dashes);
    painter.drawRect(line);
}

void paintHandles(QPainter& painter, const Selection& selection)
{
    painter.setPen(linePen(Config::leafGreen, 1));
    painter.setBrush(Qt::white);
    for (const Handle handle : kHandles) {
        QRectF square(0, 0, kHandleSide, kHandleSide);
        square.moveCenter(selection.centre(handle));
        painter.drawRect(square);
    }
}

void paintHoveredWindow(QPainter& painter, const QRectF& window)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(linePen(Config::leafGreen, kHoverWidth));
    painter.drawRect(window.adjusted(kHoverInset, kHoverInset, -kHoverInset, -kHoverInset));
}

} // namespace brindlecam::SelectionFrame
