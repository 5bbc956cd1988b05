#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

namespace brindlecam {

class Annotation;

/// How marks are drawn: the same on the screen and in the finished picture. Points of the canvas;
/// on any thread.
namespace AnnotationPainting {

/// The head of an arrow.
struct ArrowHead {
    QPointF tip;
    QPointF left;
    QPointF right;
    QPointF base; ///< between left and right: here the shaft ends
};

/// None for an arrow of a point or less, of which nothing is drawn.
[[nodiscard]] std::optional<ArrowHead> arrowHead(QPointF start, QPointF end, qreal lineWidth);

void draw(const Annotation& mark, QPainter& painter);

/// All that drawing may touch, antialiased edges included.
[[nodiscard]] QRectF touched(const Annotation& mark);

/// The same as rectangles that leave out most of what a long line passes by. They may overlap.
[[nodiscard]] std::vector<QRectF> touchedParts(const Annotation& mark);

} // namespace AnnotationPainting

} // namespace brindlecam
