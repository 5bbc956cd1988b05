#include "canvas/CanvasCursor.h"

#include "canvas/Selection.h"

namespace brindlecam {

Qt::CursorShape cursorAt(const Selection& selection, QPointF point)
{
    if (const auto handle = selection.handleAt(point)) {
        if (handle->dy == 0)
            return Qt::SizeHorCursor;
        return handle->dx == 0 ? Qt::SizeVerCursor : Qt::CrossCursor;
    }
    if (!selection.isEmpty() && selection.rect().contains(point))
        return Qt::OpenHandCursor;
    return Qt::CrossCursor;
}

} // namespace brindlecam
