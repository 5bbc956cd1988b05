#pragma once

#include <QPointF>

class QMouseEvent;
class QWidget;

namespace brindlecam {

/// Where in a widget (points) the pointer is. Qt rounds an event's own position to whole points on
/// its way to a child widget, which at fractional scales is not the pixel under the pointer.
[[nodiscard]] QPointF exactPosition(const QMouseEvent& event, const QWidget& widget);

} // namespace brindlecam
