#pragma once

#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

class QPainter;

namespace brindlecam {

/// The pixel magnifier beside the pointer. Places are points of the canvas, pixels are those of the
/// frozen picture.
namespace Loupe {

/// Where the loupe stands for a pointer: below and to the right of it, flipped near the right and
/// lower edges.
[[nodiscard]] QRectF rect(QPointF pointer, QSizeF canvas);

/// Everything the loupe covers, its border and coordinate label included.
[[nodiscard]] QRectF covered(const QRectF& loupe);

/// The square of picture pixels it magnifies; it may reach beyond the picture, the pointer's pixel
/// is always its centre.
[[nodiscard]] QRect source(QPoint pixel);

/// Paints the loupe with its label for a pointer on this picture.
void paint(QPainter& painter, QPointF pointer, const QImage& image, QSizeF canvas);

} // namespace Loupe

} // namespace brindlecam
