#pragma once

#include <QPointF>
#include <Qt>

namespace brindlecam {

class Selection;

/// The pointer's shape over a place of the canvas (points).
[[nodiscard]] Qt::CursorShape cursorAt(const Selection& selection, QPointF point);

} // namespace brindlecam
