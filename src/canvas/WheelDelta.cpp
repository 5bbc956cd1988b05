#include "canvas/WheelDelta.h"

#include <QPointingDevice>
#include <QWheelEvent>

namespace brindlecam {

namespace {

constexpr qreal kAnglePerNotch = 120; // eighths of a degree
constexpr qreal kPointsPerNotch = 12;

} // namespace

qreal wheelNotches(const QWheelEvent& event)
{
    const bool precise = event.pointingDevice() &&
                         event.pointingDevice()->type() == QInputDevice::DeviceType::TouchPad;
    if (precise && !event.pixelDelta().isNull())
        return event.pixelDelta().y() / kPointsPerNotch;
    return event.angleDelta().y() / kAnglePerNotch;
}

} // namespace brindlecam
