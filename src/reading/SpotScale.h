#pragma once

#include <QRect>
#include <QSize>

#include <vector>

namespace brindlecam {

/// How much a picture is enlarged so that its letters have the height the engine reads best.
namespace SpotScale {

/// The factor for a picture with these spots, 1 to 2.5. `size` is the picture's, in pixels; an
/// enormous one is enlarged less.
[[nodiscard]] double factor(const std::vector<QRect>& spots, QSize size);

} // namespace SpotScale

} // namespace brindlecam
