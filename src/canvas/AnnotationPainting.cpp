#include "canvas/AnnotationPainting.h"

#include "canvas/Annotation.h"
#include "canvas/AnnotationText.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace brindlecam::AnnotationPainting {

// All lengths in points.
namespace {

constexpr qreal kEdge = 1; // antialiasing at one pixel per point, the coarsest there is

// Device pixels. Qt (6.4 and 6.11) draws lines of one pixel and less by another class than wider
// ones, QCosmeticStroker, which cuts them at the edges of the picture and turns them a little by
// that.
constexpr qreal kThinnestLine = 1.001;

constexpr qreal kStrokeOverhang = 1; // beyond half of the width
constexpr qreal kPartSide = 32;      // the shorter side of what a piece of a stroke takes, at most

constexpr qreal kShortestArrow = 1;
constexpr qreal kHeadPerWidth = 4;
constexpr qreal kHeadBase = 9;
constexpr qreal kShortestHead = 8;
constexpr qreal kHeadSlope = 0.42; // half of its width by its length

constexpr qreal kOutlineWidth = 1.5;
constexpr float kOutlineAlpha = 0.9F;
constexpr qreal kLabelSize = 0.58; // by the badge's diameter
constexpr qreal kBrightFrom = 0.65;

constexpr qreal kTextIndent = 2;
constexpr qreal kTextReach = 4000;
constexpr qreal kTextOverhang = 4; // what glyphs may stick out of their advance

/// For a painter that counts in points.
QPen pen(const Annotation& mark, const QColor& color, const QPainter& painter)
{
    const qreal thinnest = kThinnestLine / painter.deviceTransform().m11();
    return {color, std::max(mark.lineWidth(), thinnest), Qt::SolidLine, Qt::RoundCap,
            Qt::RoundJoin};
}

/// Qt draws nothing for a line without length, where a round cap would leave a dot.
void drawDot(QPainter& painter, QPointF at, const QColor& color, qreal diameter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(at, diameter / 2, diameter / 2);
}

/// Where a stroke that ends where it began is cut, as the number of a point; else none. Qt joins
/// such ends in a way of its own, but only in parts where all of the stroke may show.
std::optional<qsizetype> cutOf(const QPolygonF& points)
{
    if (points.first() != points.last())
        return std::nullopt;
    const auto elsewhere = std::find_if(points.rbegin(), points.rend(),
                                        [&](QPointF point) { return point != points.first(); });
    return points.rend() - elsewhere - 1;
}

/// The segments that may show within `visible`. Stroking is what a long stroke costs; a segment
/// left out lies so far away that neither it nor the cap it is replaced by reaches there.
QPainterPath visiblePath(const QPolygonF& points, const QRectF& visible)
{
    QPainterPath path;
    const std::optional<qsizetype> cut = cutOf(points);
    bool joined = false;
    for (qsizetype i = 1; i < points.size(); ++i) {
        joined = joined && i - 1 != cut;
        const QPointF a = points.at(i - 1);
        const QPointF b = points.at(i);
        const bool shows =
            std::max(a.x(), b.x()) >= visible.left() && std::min(a.x(), b.x()) <= visible.right() &&
            std::max(a.y(), b.y()) >= visible.top() && std::min(a.y(), b.y()) <= visible.bottom();
        if (shows && !joined)
            path.moveTo(a);
        if (shows)
            path.lineTo(b);
        joined = shows;
    }
    return path;
}

void drawPolyline(const Annotation& mark, QPainter& painter, const QPolygonF& points,
                  const QColor& color)
{
    const bool still = std::all_of(points.begin(), points.end(),
                                   [&](QPointF point) { return point == points.first(); });
    if (still)
        return drawDot(painter, points.first(), color, mark.lineWidth());
    QRectF visible = points.boundingRect();
    if (painter.hasClipping()) {
        const qreal reach = mark.lineWidth() / 2 + 2 * kEdge;
        visible = painter.clipBoundingRect().adjusted(-reach, -reach, reach, reach);
    }
    painter.strokePath(visiblePath(points, visible), pen(mark, color, painter));
}

QColor translucent(QColor color, qreal alpha)
{
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

void drawRect(const Annotation& mark, QPainter& painter)
{
    const QRectF rect = mark.rect();
    if (rect.isNull())
        return drawDot(painter, rect.topLeft(), mark.color(), mark.lineWidth());
    QPainterPath path(rect.topLeft());
    path.lineTo(rect.topRight());
    path.lineTo(rect.bottomRight());
    path.lineTo(rect.bottomLeft());
    path.closeSubpath();
    painter.strokePath(path, pen(mark, mark.color(), painter));
}

void drawArrow(const Annotation& mark, QPainter& painter)
{
    const QPointF start = mark.points().first();
    const auto head = arrowHead(start, mark.points().last(), mark.lineWidth());
    if (!head)
        return;
    // The shaft ends where the head begins: its round cap must not show past the tip.
    drawPolyline(mark, painter, {{start, head->base}}, mark.color());
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark.color());
    painter.drawConvexPolygon(std::array{head->tip, head->left, head->right}.data(), 3);
}

QRectF textArea(const Annotation& mark)
{
    QRectF area = mark.bounds();
    area.setWidth(std::min(area.width(), kTextIndent + kTextReach));
    return area.adjusted(-kTextOverhang, 0, kTextOverhang, 0);
}

void drawText(const Annotation& mark, QPainter& painter)
{
    painter.setClipRect(textArea(mark), Qt::IntersectClip);
    painter.setPen(mark.color());
    AnnotationText::draw(painter, mark.points().first() + QPointF(kTextIndent, 0), mark.text());
}

QColor labelColor(const QColor& badge)
{
    const QColor rgb = badge.toRgb();
    const qreal brightness = 0.299 * rgb.redF() + 0.587 * rgb.greenF() + 0.114 * rgb.blueF();
    return brightness > kBrightFrom ? Qt::black : Qt::white;
}

void drawBadge(const Annotation& mark, QPainter& painter)
{
    const QRectF circle = mark.bounds();
    painter.setPen(QPen(translucent(Qt::white, kOutlineAlpha), kOutlineWidth));
    painter.setBrush(mark.color());
    painter.drawEllipse(circle);

    const qreal size = kLabelSize * mark.lineWidth();
    const qreal whole = std::max(1.0, std::ceil(size));
    const TextLine label{QString::number(mark.number()), InterfaceFont::bold(whole)};
    painter.translate(circle.center());
    painter.scale(size / whole, size / whole);
    painter.setPen(labelColor(mark.color()));
    label.draw(painter, {-label.width() / 2, label.ascent() - label.height() / 2});
}

QRectF badgeArea(const Annotation& mark)
{
    // A digit is narrower than its font is high.
    const auto digits = static_cast<qreal>(QString::number(mark.number()).size());
    const qreal label = digits * kLabelSize * mark.lineWidth();
    const QRectF circle = mark.bounds();
    const qreal beside = std::max(0.0, (label - circle.width()) / 2);
    return circle.adjusted(-beside, 0, beside, 0);
}

QRectF enlarged(const QRectF& rect, qreal by)
{
    return rect.adjusted(-by, -by, by, by);
}

/// Unlike QRectF's own union, with rectangles that are lines or points.
QRectF spannedBy(const QRectF& rect, QPointF point)
{
    return {QPointF(std::min(rect.left(), point.x()), std::min(rect.top(), point.y())),
            QPointF(std::max(rect.right(), point.x()), std::max(rect.bottom(), point.y()))};
}

/// Rectangles along a stroke of this width, each low or narrow.
std::vector<QRectF> strokeParts(const QPolygonF& points, qreal width)
{
    std::vector<QRectF> parts;
    const qreal reach = width / 2 + kStrokeOverhang + kEdge;
    QRectF part(points.first(), QSizeF(0, 0));
    QPointF last = points.first();
    for (qsizetype i = 1; i < points.size(); ++i) {
        const QPointF from = points.at(i - 1);
        const QPointF whole = points.at(i) - from;
        const qreal across = std::min(std::abs(whole.x()), std::abs(whole.y()));
        const int pieces = std::max(1, static_cast<int>(std::ceil(across / kPartSide)));
        for (int piece = 1; piece <= pieces; ++piece) {
            const QPointF next = from + whole * piece / pieces;
            const QRectF longer = spannedBy(part, next);
            if (std::min(longer.width(), longer.height()) <= kPartSide) {
                part = longer;
            } else {
                parts.push_back(enlarged(part, reach));
                part = spannedBy({last, QSizeF(0, 0)}, next);
            }
            last = next;
        }
    }
    parts.push_back(enlarged(part, reach));
    return parts;
}

std::vector<QRectF> arrowParts(const Annotation& mark)
{
    const QPointF start = mark.points().first();
    const auto head = arrowHead(start, mark.points().last(), mark.lineWidth());
    if (!head)
        return {};
    std::vector<QRectF> parts = strokeParts({{start, head->base}}, mark.lineWidth());
    const QRectF tip(head->tip, QSizeF(0, 0));
    parts.push_back(enlarged(spannedBy(spannedBy(tip, head->left), head->right), 2 * kEdge));
    return parts;
}

} // namespace

std::optional<ArrowHead> arrowHead(QPointF start, QPointF end, qreal lineWidth)
{
    const qreal length = QLineF(start, end).length();
    if (length <= kShortestArrow)
        return std::nullopt;
    const QPointF along = (end - start) / length;
    const QPointF across(-along.y(), along.x());
    const qreal head =
        std::max(kShortestHead, std::min(length / 2, kHeadPerWidth * lineWidth + kHeadBase));
    const QPointF base = end - along * head;
    const QPointF side = across * (kHeadSlope * head);
    return ArrowHead{.tip = end, .left = base + side, .right = base - side, .base = base};
}

void draw(const Annotation& mark, QPainter& painter)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    switch (mark.tool()) {
    case Tool::pen:
    case Tool::line:
        drawPolyline(mark, painter, mark.points(), mark.color());
        break;
    case Tool::marker:
        drawPolyline(mark, painter, mark.points(), translucent(mark.color(), mark.opacity()));
        break;
    case Tool::arrow:
        drawArrow(mark, painter);
        break;
    case Tool::rect:
        drawRect(mark, painter);
        break;
    case Tool::text:
        drawText(mark, painter);
        break;
    case Tool::number:
        drawBadge(mark, painter);
        break;
    case Tool::pixelate:
        if (mark.pixelated())
            mark.pixelated()->draw(painter, mark.rect());
        break;
    }
    painter.restore();
}

QRectF touched(const Annotation& mark)
{
    QRectF area = mark.bounds();
    if (mark.tool() == Tool::text)
        area = textArea(mark);
    else if (mark.tool() == Tool::number)
        area =
            badgeArea(mark).adjusted(-kOutlineWidth, -kOutlineWidth, kOutlineWidth, kOutlineWidth);
    return enlarged(area, kEdge);
}

std::vector<QRectF> touchedParts(const Annotation& mark)
{
    switch (mark.tool()) {
    case Tool::pen:
    case Tool::line:
    case Tool::marker:
        return strokeParts(mark.points(), mark.lineWidth());
    case Tool::arrow:
        return arrowParts(mark);
    case Tool::rect: {
        const QRectF rect = mark.rect();
        return strokeParts({{rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft(),
                             rect.topLeft()}},
                           mark.lineWidth());
    }
    case Tool::text:
    case Tool::number:
    case Tool::pixelate:
        break;
    }
    return {touched(mark)};
}

} // namespace brindlecam::AnnotationPainting
