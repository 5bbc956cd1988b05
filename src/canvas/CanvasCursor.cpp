#include "canvas/CanvasCursor.h"

#include "canvas/AnnotationEditor.h"
#include "canvas/Selection.h"

namespace brindlecam {

Qt::CursorShape cursorAt(const Selection& selection, const AnnotationEditor& editor, QPointF point)
{
    if (const auto handle = selection.handleAt(point)) {
        if (handle->dy == 0)
            return Qt::SizeHorCursor;
        return handle->dx == 0 ? Qt::SizeVerCursor : Qt::CrossCursor;
    }
    if (selection.isEmpty() || !selection.rect().contains(point))
        return Qt::CrossCursor;
    if (!editor.tool())
        return editor.annotationAt(point) ? Qt::PointingHandCursor : Qt::OpenHandCursor;
    return editor.tool() == Tool::text ? Qt::IBeamCursor : Qt::CrossCursor;
}

} // namespace brindlecam
