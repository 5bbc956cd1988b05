#pragma once

#include <QRect>
#include <QRectF>
#include <QSizeF>

namespace brindlecam {

/// Where bars and popups stand around a selection: 8 points from it and at least 4 from the edges
/// of the canvas. Whole points of the canvas, origin top-left. A canvas too small for a bar cuts
/// its far end off.
namespace BarPlacement {

/// Beside the selection, tops aligned: on its right, else on its left, else inside its right edge.
[[nodiscard]] QRect toolsBar(const QRectF& selection, QSizeF canvas, QSize bar);

/// Below the selection, right edges aligned; else above it, else inside its lower edge.
[[nodiscard]] QRect actionsBar(const QRectF& selection, QSizeF canvas, QSize bar);

/// Beside the tools bar: on its right, else on its left; its top 4 points above the button's.
[[nodiscard]] QRect popup(const QRect& toolsBar, int buttonCentreY, QSize popup, QSizeF canvas);

} // namespace BarPlacement

} // namespace brindlecam
