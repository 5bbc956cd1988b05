#pragma once

#include <QPointF>

class QMouseEvent;
class QWidget;

namespace brindlecam {

/// Where in a widget (points) the pointer is. On an event's way to a child widget Qt 6.4 rounds its
/// position to whole points (QWidgetWindow::handleMouseEvent), which at fractional scales is not
/// the pixel under the pointer. Drop it when every Qt we build with keeps it real, as 6.11 does.
[[nodiscard]] QPointF exactPosition(const QMouseEvent& event, const QWidget& widget);

} // namespace brindlecam
