#include "look/WheelDelta.h"

#include <QPointingDevice>
#include <QWheelEvent>

#include <cstdlib>

namespace brindlecam {

namespace {

constexpr qreal kAnglePerNotch = 120; // eighths of a degree
constexpr qreal kPointsPerNotch = 12;

int larger(QPoint delta)
{
    return std::abs(delta.x()) > std::abs(delta.y()) ? delta.x() : delta.y();
}

} // namespace

WheelDelta WheelDelta::of(const QWheelEvent& event)
{
    return along(event, event.angleDelta().y(), event.pixelDelta().y());
}

WheelDelta WheelDelta::sideways(const QWheelEvent& event)
{
    return along(event, larger(event.angleDelta()), larger(event.pixelDelta()));
}

WheelDelta WheelDelta::along(const QWheelEvent& event, int angle, int pixels)
{
    const qreal notches = angle / kAnglePerNotch;
    const bool precise = event.pointingDevice() &&
                         event.pointingDevice()->type() == QInputDevice::DeviceType::TouchPad;
    if (!precise)
        return {notches, Unit::notches};
    if (event.pixelDelta().isNull())
        return {notches * kPointsPerNotch, Unit::points};
    return {qreal(pixels), Unit::points};
}

qreal WheelDelta::notches() const
{
    return unit == Unit::points ? amount / kPointsPerNotch : amount;
}

} // namespace brindlecam
