#include "base/ScreenInfo.h"

#include "base/Geometry.h"

namespace brindlecam {

QSizeF ScreenInfo::size() const
{
    return QSizeF(native.size()) / scale;
}

QRectF ScreenInfo::toPoints(const QRect& nativeRect) const
{
    const QRect clipped = nativeRect.intersected(native).translated(-native.topLeft());
    if (clipped.isEmpty())
        return {};
    return {QPointF(clipped.topLeft()) / scale, QSizeF(clipped.size()) / scale};
}

QPointF ScreenInfo::toPoints(const QPoint& nativePoint) const
{
    return QPointF(nativePoint - native.topLeft()) / scale;
}

QRect ScreenInfo::toNative(const QRectF& points) const
{
    return roundedOutward({points.topLeft() * scale, points.size() * scale})
        .translated(native.topLeft());
}

bool ScreenInfo::sameDisplay(const ScreenInfo& other) const
{
    return id == other.id && native == other.native && scale == other.scale;
}

} // namespace brindlecam
