#pragma once

#include <QRectF>
#include <QRegion>

class QPainter;

namespace brindlecam {

/// The lines around the selection (with its handles) and around a hovered window. Points.
namespace SelectionFrame {

/// What border and handles of this selection cover.
[[nodiscard]] QRegion covered(const QRectF& selection, qreal scale);

void paintBorder(QPainter& painter, const QRectF& selection);
void paintHandles(QPainter& painter, const QRectF& selection);
void paintHoveredWindow(QPainter& painter, const QRectF& window);

} // namespace SelectionFrame

} // namespace brindlecam
