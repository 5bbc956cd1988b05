#pragma once

#include <QtGlobal>

namespace brindlecam {

/// Gathers the wheel's movements, which may be parts of a notch, into whole steps.
class WheelSteps final {
public:
    /// The steps that are complete with this movement, negative ones downwards; what is left over
    /// counts for the next. What is no finite number counts as nothing.
    [[nodiscard]] int add(qreal notches);

private:
    qreal m_rest = 0;
};

/// The marker opacity so many steps of 5 % from another, on a grid of 5 %, from 10 % to 100 %.
[[nodiscard]] double markerOpacityAfter(int steps, double opacity);

} // namespace brindlecam
