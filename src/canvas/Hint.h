#pragma once

#include <QRectF>
#include <QSizeF>

class QPainter;

namespace brindlecam {

/// What to do, told near the top of a screen while nothing is selected.
namespace Hint {

/// The capsule's place on a canvas of this size, in points.
[[nodiscard]] QRectF rect(QSizeF canvas);

void paint(QPainter& painter, QSizeF canvas);

} // namespace Hint

} // namespace brindlecam
