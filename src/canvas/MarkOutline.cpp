#include "canvas/MarkOutline.h"

#include "base/RepaintArea.h"
#include "preferences/Config.h"

#include <QPainter>

#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kDistance = 4; // from the mark
constexpr qreal kRadius = 4;
constexpr qreal kLine = 1.5;
constexpr qreal kDash = 4;
constexpr qreal kGap = 3;
constexpr qreal kEdge = 1; // antialiasing at one pixel per point, the coarsest there is

// Qt's time for a shape grows with the square of the edges that one row of pixels crosses: its
// rasteriser (qgrayraster.c, 6.4 and 6.11) looks each up in a list.
constexpr int kGroup = 16;

/// From the top left to the right, where QPainter::drawRoundedRect() begins with its dashes.
QPainterPath roundedRect(const QRectF& rect)
{
    constexpr qreal kCorner = 2 * kRadius;
    const qreal right = rect.right() - kCorner;
    const qreal bottom = rect.bottom() - kCorner;
    QPainterPath path({rect.left() + kRadius, rect.top()});
    path.arcTo(right, rect.top(), kCorner, kCorner, 90, -90);
    path.arcTo(right, bottom, kCorner, kCorner, 0, -90);
    path.arcTo(rect.left(), bottom, kCorner, kCorner, 270, -90);
    path.arcTo(rect.left(), rect.top(), kCorner, kCorner, 180, -90);
    return path;
}

QPainterPath dashesAlong(const QRectF& rect)
{
    QPainterPathStroker stroker;
    stroker.setWidth(kLine);
    stroker.setCapStyle(Qt::FlatCap);
    stroker.setDashPattern({kDash / kLine, kGap / kLine}); // in widths of the line
    return stroker.createStroke(roundedRect(rect));
}

} // namespace

MarkOutline::MarkOutline(const QRectF& bounds)
    : m_rect(bounds.adjusted(-kDistance, -kDistance, kDistance, kDistance))
{
    const QPainterPath dashes = dashesAlong(m_rect);
    QPainterPath group;
    int inGroup = 0;
    for (int i = 0; i < dashes.elementCount(); ++i) {
        const QPainterPath::Element element = dashes.elementAt(i);
        switch (element.type) {
        case QPainterPath::MoveToElement:
            if (inGroup++ % kGroup == 0)
                addGroup(group);
            group.moveTo(element);
            break;
        case QPainterPath::LineToElement:
            group.lineTo(element);
            break;
        case QPainterPath::CurveToElement:
            group.cubicTo(element, dashes.elementAt(i + 1), dashes.elementAt(i + 2));
            i += 2;
            break;
        case QPainterPath::CurveToDataElement:
            Q_UNREACHABLE();
        }
    }
    addGroup(group);
}

void MarkOutline::addGroup(QPainterPath& group)
{
    if (group.isEmpty())
        return;
    group.setFillRule(Qt::WindingFill);
    const QRectF bounds = group.controlPointRect().adjusted(-kEdge, -kEdge, kEdge, kEdge);
    m_dashes.push_back({std::exchange(group, {}), bounds});
}

QRegion MarkOutline::covered(const QRectF& bounds, qreal scale)
{
    // The line's round corners come no nearer to the mark than its straight parts by more than
    // their radius.
    constexpr qreal kReach = kDistance + kLine;
    return repaintBand(bounds.adjusted(-kReach, -kReach, kReach, kReach), 2 * kLine + kRadius,
                       scale);
}

void MarkOutline::paint(QPainter& painter, const QRectF& visible) const
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, kLine));
    painter.drawRoundedRect(m_rect, kRadius, kRadius);
    for (const Dashes& dashes : m_dashes) {
        if (dashes.bounds.intersects(visible))
            painter.fillPath(dashes.path, Config::leafGreen);
    }
}

} // namespace brindlecam
