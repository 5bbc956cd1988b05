#include "canvas/Annotation.h"

#include "base/Geometry.h"
#include "canvas/AnnotationPainting.h"
#include "canvas/AnnotationText.h"

#include <QFontMetricsF>
#include <QLineF>

#include <algorithm>
#include <cmath>

namespace brindlecam {

// All in points.
namespace {

constexpr qreal kShortestMark = 3;
constexpr qreal kHitTolerance = 7;
constexpr qreal kNearHitTolerance = 3; // around badges, texts and pixelations
constexpr qreal kStrokeBoundsMargin = 1;
constexpr qreal kSmallestHeadRoom = 10;
constexpr qreal kHeadRoomPerWidth = 3;
constexpr qreal kTextBoundsMargin = 4;

bool hasTwoEnds(Tool tool)
{
    return tool == Tool::line || tool == Tool::arrow || tool == Tool::rect ||
           tool == Tool::pixelate;
}

QRectF markGrown(const QRectF& rect, qreal by)
{
    return rect.adjusted(-by, -by, by, by);
}

qreal distanceToSegment(QPointF point, QPointF a, QPointF b)
{
    const QPointF along = b - a;
    const qreal squared = QPointF::dotProduct(along, along);
    const qreal part =
        squared > 0 ? std::clamp(QPointF::dotProduct(point - a, along) / squared, 0.0, 1.0) : 0;
    return QLineF(point, a + along * part).length();
}

} // namespace

Annotation::Annotation(Tool tool, const QColor& color, QPointF start)
    : m_tool(tool)
    , m_color(color)
    , m_points(hasTwoEnds(tool) ? 2 : 1, start)
    , m_box(start, QSizeF(0, 0))
{
}

void Annotation::append(QPointF point)
{
    m_points.append(point);
    m_box =
        QRectF(QPointF(std::min(m_box.left(), point.x()), std::min(m_box.top(), point.y())),
               QPointF(std::max(m_box.right(), point.x()), std::max(m_box.bottom(), point.y())));
}

void Annotation::setEnd(QPointF point)
{
    Q_ASSERT(m_points.size() == 2);
    m_points.last() = point;
    m_box = rect();
}

void Annotation::moveTo(QPointF point)
{
    translate(point - m_points.first());
}

void Annotation::translate(QPointF by)
{
    m_points.translate(by);
    m_box.translate(by);
}

void Annotation::setText(const QString& text, qreal boxHeight)
{
    m_text = text;
    m_textHeight = boxHeight;
    m_measured = AnnotationText::measured(text);
}

QRectF Annotation::rect() const
{
    return spanned(m_points.first(), m_points.last());
}

QRectF Annotation::bounds() const
{
    switch (m_tool) {
    case Tool::pixelate:
        return rect();
    case Tool::number:
        return markGrown({m_points.first(), QSizeF(0, 0)}, m_lineWidth / 2);
    case Tool::text:
        return {m_points.first(), QSizeF(m_measured.width() + kTextBoundsMargin,
                                         std::max(m_measured.height(), m_textHeight))};
    case Tool::arrow:
        return markGrown(m_box, std::max(kSmallestHeadRoom, kHeadRoomPerWidth * m_lineWidth) +
                                    kStrokeBoundsMargin);
    case Tool::pen:
    case Tool::line:
    case Tool::rect:
    case Tool::marker:
        break;
    }
    return markGrown(m_box, m_lineWidth / 2 + kStrokeBoundsMargin);
}

QRectF Annotation::paintedBounds() const
{
    return AnnotationPainting::touched(*this);
}

std::vector<QRectF> Annotation::paintedParts() const
{
    return AnnotationPainting::touchedParts(*this);
}

bool Annotation::isNegligible() const
{
    if (m_tool == Tool::text)
        return m_text.isEmpty();
    return hasTwoEnds(m_tool) && QLineF(m_points.first(), m_points.last()).length() < kShortestMark;
}

bool Annotation::hitTest(QPointF point) const
{
    const qreal tolerance = std::max(kHitTolerance, m_lineWidth / 2);
    switch (m_tool) {
    case Tool::rect: {
        const QRectF inside = markGrown(rect(), -tolerance);
        return markGrown(rect(), tolerance).contains(point) &&
               !(inside.isValid() && inside.contains(point));
    }
    case Tool::number:
        return QLineF(point, m_points.first()).length() <= m_lineWidth / 2 + kNearHitTolerance;
    case Tool::text:
    case Tool::pixelate:
        return markGrown(bounds(), kNearHitTolerance).contains(point);
    case Tool::pen:
    case Tool::line:
    case Tool::arrow:
    case Tool::marker:
        break;
    }
    return markGrown(m_box, tolerance).contains(point) && polylineHit(point, tolerance);
}

bool Annotation::polylineHit(QPointF point, qreal tolerance) const
{
    if (m_points.size() == 1)
        return QLineF(point, m_points.first()).length() <= tolerance;
    for (qsizetype i = 1; i < m_points.size(); ++i) {
        if (distanceToSegment(point, m_points.at(i - 1), m_points.at(i)) <= tolerance)
            return true;
    }
    return false;
}

void Annotation::draw(QPainter& painter) const
{
    AnnotationPainting::draw(*this, painter);
}

const QFont& Annotation::textFont()
{
    return AnnotationText::font();
}

qreal Annotation::textLineHeight()
{
    const QFontMetricsF metrics(textFont());
    return std::ceil(metrics.ascent() + metrics.descent());
}

} // namespace brindlecam
