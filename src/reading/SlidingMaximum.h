#pragma once

#include "reading/StopRequest.h"

#include <QImage>

namespace brindlecam {

/// For each pixel of an 8-bit picture the largest value within `acrossReach` pixels to the left and
/// right and `downReach` pixels above and below. Time does not depend on the reach. Throws
/// std::bad_alloc.
[[nodiscard]] QImage slidingMaximum(const QImage& values, int acrossReach, int downReach,
                                    StopRequest stop = {});

} // namespace brindlecam
