#pragma once

#include <QPointF>
#include <Qt>

namespace brindlecam {

class AnnotationEditor;
class Selection;

/// The pointer's shape over a place of the canvas (points).
[[nodiscard]] Qt::CursorShape cursorAt(const Selection& selection, const AnnotationEditor& editor,
                                       QPointF point);

} // namespace brindlecam
