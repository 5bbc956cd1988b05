#pragma once

#include <QRectF>
#include <QRegion>

class QPainter;

namespace brindlecam {

class Selection;

/// The line around the selection with its handles, and the line around a hovered window. Points.
namespace SelectionFrame {

/// What border and handles of this selection cover.
[[nodiscard]] QRegion covered(const QRectF& selection, qreal scale);

void paintBorder(QPainter& painter, const QRectF& selection);
void paintHandles(QPainter& painter, const Selection& selection);
void paintHoveredWindow(QPainter& painter, const QRectF& window);

} // namespace SelectionFrame

} // namespace brindlecam
