#pragma once

#include <QtGlobal>

class QWheelEvent;

namespace brindlecam {

/// How far a wheel was turned in one event; negative towards the user.
struct WheelDelta {
    enum class Unit {
        notches, ///< a wheel that turns in steps, or in parts of them
        points,  ///< a touchpad, which tells distances
    };

    qreal amount = 0;
    Unit unit = Unit::notches;

    /// Up and down.
    [[nodiscard]] static WheelDelta of(const QWheelEvent& event);
    /// In whichever direction it was turned further: for what moves sideways only.
    [[nodiscard]] static WheelDelta sideways(const QWheelEvent& event);

    /// The same in notches: twelve points count as one.
    [[nodiscard]] qreal notches() const;

private:
    [[nodiscard]] static WheelDelta along(const QWheelEvent& event, int angle, int pixels);
};

} // namespace brindlecam
