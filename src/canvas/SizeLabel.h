#pragma once

#include <QRectF>
#include <QSize>
#include <QSizeF>

class QPainter;

namespace brindlecam {

/// The selection's size in picture pixels, told just above its top-left corner, or inside it when
/// there is no room above. Points.
namespace SizeLabel {

/// Where a label of this size stands for a selection.
[[nodiscard]] QRectF place(const QRectF& selection, QSizeF label);

/// Everything the label covers for a selection of so many pixels.
[[nodiscard]] QRectF rect(const QRectF& selection, QSize pixels);

void paint(QPainter& painter, const QRectF& selection, QSize pixels);

} // namespace SizeLabel

} // namespace brindlecam
