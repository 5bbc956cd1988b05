#pragma once

#include <QtGlobal>

class QWheelEvent;

namespace brindlecam {

/// How far a wheel was turned, in notches; negative towards the user. A touchpad tells distances:
/// twelve points of one count as a notch.
[[nodiscard]] qreal wheelNotches(const QWheelEvent& event);

} // namespace brindlecam
