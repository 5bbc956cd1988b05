#pragma once

#include <QImage>

namespace brindlecam {

/// For each pixel of an 8-bit picture the largest value within `acrossReach` pixels to the left and
/// right and `downReach` pixels above and below. Time does not depend on the reach.
[[nodiscard]] QImage slidingMaximum(const QImage& values, int acrossReach, int downReach);

} // namespace brindlecam
