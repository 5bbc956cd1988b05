#pragma once

#include <QRectF>
#include <QRegion>

class QPainter;

namespace brindlecam {

/// The lines around the selection (with its handles), around a hovered window and around the
/// selected mark. Points.
namespace SelectionFrame {

/// What border and handles of this selection cover.
[[nodiscard]] QRegion covered(const QRectF& selection, qreal scale);

void paintBorder(QPainter& painter, const QRectF& selection);
void paintHandles(QPainter& painter, const QRectF& selection);
void paintHoveredWindow(QPainter& painter, const QRectF& window);

/// What the line around a mark of these bounds covers.
[[nodiscard]] QRegion coveredAroundMark(const QRectF& bounds, qreal scale);
void paintMarkOutline(QPainter& painter, const QRectF& bounds);

} // namespace SelectionFrame

} // namespace brindlecam
