#pragma once

#include "reading/ColourRegions.h"

#include <vector>

namespace brindlecam {

/// Which areas of a picture are what text stands on: the page, a side bar, a button. Any thread.
namespace Backgrounds {

/// For each region of the picture, whether it is a background. At least one is, unless the picture
/// is empty. `size` is the picture's, in pixels.
[[nodiscard]] std::vector<bool> among(const ColourRegions& regions, QSize size,
                                      StopRequest stop = {});

} // namespace Backgrounds

} // namespace brindlecam
