#include "reading/SpotScale.h"

#include <algorithm>
#include <cmath>

namespace brindlecam::SpotScale {

namespace {

constexpr double kBestHeight = 16;   ///< pixels, of the median spot
constexpr double kMost = 2.5;        ///< factor
constexpr double kNotWorthIt = 1.3;  ///< factor below which the picture stays as it is
constexpr std::size_t kFewSpots = 3; ///< too few for a median
constexpr double kMostPixels = 64e6; ///< of the enlarged picture
constexpr double kMostSide = 32000;  ///< pixels; the engine counts them in 16 bits

double wanted(const std::vector<QRect>& spots)
{
    if (spots.size() < kFewSpots)
        return kMost;
    std::vector<int> heights;
    heights.reserve(spots.size());
    for (const QRect& spot : spots)
        heights.push_back(spot.height());
    const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::nth_element(heights.begin(), middle, heights.end());
    return std::clamp(kBestHeight / *middle, 1.0, kMost);
}

} // namespace

double factor(const std::vector<QRect>& spots, QSize size)
{
    const double pixels = std::max(1.0, static_cast<double>(size.width()) * size.height());
    const double side = std::max({1, size.width(), size.height()});
    const double chosen =
        std::min({wanted(spots), std::sqrt(kMostPixels / pixels), kMostSide / side});
    return chosen < kNotWorthIt ? 1 : chosen;
}

} // namespace brindlecam::SpotScale
