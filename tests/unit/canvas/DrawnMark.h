#pragma once

#include "canvas/Annotation.h"

#include <QImage>

namespace brindlecam::test {

/// What marks are drawn over: a grey that none of them has.
inline constexpr QRgb kPaper = 0xff808080;

/// A red text, or one of another colour, in a box as high as the one it is typed in.
Annotation textMark(QPointF topLeft, const QString& words, const QColor& color = Qt::red);

/// A mark from here to there: of two points, whatever the tool.
Annotation markBetween(Tool tool, QPointF start, QPointF end, const QColor& color = Qt::red,
                       qreal width = 4);

Annotation badgeMark(QPointF centre, qreal diameter, int number, const QColor& color);

/// A mark drawn on paper of this size, at so many pixels per point.
QImage drawnMark(const Annotation& mark, QSize points, qreal scale = 1);

/// The smallest rectangle around every pixel that is not paper.
QRect inkedRect(const QImage& picture);

bool hasPixel(const QImage& picture, QRgb color);

} // namespace brindlecam::test
