#include "canvas/WheelSteps.h"

#include "base/Tool.h"

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

constexpr qreal kMostNotches = 1e6; // in one movement

/// Of a step: 0.15 - 0.05 must count as two steps.
constexpr double kStepTolerance = 1e-6;

} // namespace

int WheelSteps::add(qreal notches)
{
    if (!std::isfinite(notches))
        return 0;
    m_rest += std::clamp(notches, -kMostNotches, kMostNotches);
    const qreal whole = std::trunc(m_rest);
    m_rest -= whole;
    return static_cast<int>(whole);
}

double markerOpacityAfter(int steps, double opacity)
{
    constexpr double kStepsPerWhole = 1 / kMarkerOpacities.step;
    const double whole = std::floor(steps + opacity * kStepsPerWhole + kStepTolerance);
    return std::clamp(whole / kStepsPerWhole, kMarkerOpacities.minimum, kMarkerOpacities.maximum);
}

} // namespace brindlecam
