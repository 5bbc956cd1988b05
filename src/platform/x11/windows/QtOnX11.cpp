#include "platform/x11/windows/QtOnX11.h"

#include <QScreen>
#include <QWidget>

namespace brindlecam::x11 {

xcb_window_t idOf(const QWidget& widget)
{
    return static_cast<xcb_window_t>(widget.internalWinId());
}

QRect pixelsOf(const QScreen& screen)
{
    const QRect points = screen.geometry();
    return {points.topLeft(), (QSizeF(points.size()) * screen.devicePixelRatio()).toSize()};
}

QPoint pixelAt(QPointF place, const QScreen& screen)
{
    const QPointF origin(screen.geometry().topLeft());
    return (origin + (place - origin) * screen.devicePixelRatio()).toPoint();
}

QRect roundedPoints(const QRect& native, const QScreen& screen)
{
    const QPointF origin(screen.geometry().topLeft());
    const qreal scale = screen.devicePixelRatio();
    return {(origin + (QPointF(native.topLeft()) - origin) / scale).toPoint(),
            (QSizeF(native.size()) / scale).toSize()};
}

} // namespace brindlecam::x11
