#include "look/WheelDelta.h"

#include <QPointingDevice>
#include <QWheelEvent>

namespace brindlecam {

namespace {

constexpr qreal kAnglePerNotch = 120; // eighths of a degree
constexpr qreal kPointsPerNotch = 12;

} // namespace

WheelDelta WheelDelta::of(const QWheelEvent& event)
{
    const qreal notches = event.angleDelta().y() / kAnglePerNotch;
    const bool precise = event.pointingDevice() &&
                         event.pointingDevice()->type() == QInputDevice::DeviceType::TouchPad;
    if (!precise)
        return {notches, Unit::notches};
    if (event.pixelDelta().isNull())
        return {notches * kPointsPerNotch, Unit::points};
    return {qreal(event.pixelDelta().y()), Unit::points};
}

qreal WheelDelta::notches() const
{
    return unit == Unit::points ? amount / kPointsPerNotch : amount;
}

} // namespace brindlecam
