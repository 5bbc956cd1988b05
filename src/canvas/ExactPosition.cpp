#include "canvas/ExactPosition.h"

#include <QMouseEvent>
#include <QWidget>

namespace brindlecam {

QPointF exactPosition(const QMouseEvent& event, const QWidget& widget)
{
    // The window's position is exact.
    return event.scenePosition() - QPointF(widget.mapTo(widget.window(), QPoint()));
}

} // namespace brindlecam
