#pragma once

#include <QRect>

namespace brindlecam::soak {

class Person;

/// The bars beside a selected area.
namespace Bars {

/// Throws Failure when there is no such button.
void press(Person& person, const char* button);

/// Whether both bars fit on the right and below, popups beyond them and the size above, at one
/// pixel per point: then nothing of them covers the area. Native pixels.
[[nodiscard]] bool haveRoom(const QRect& area, const QRect& monitor);

} // namespace Bars

} // namespace brindlecam::soak
