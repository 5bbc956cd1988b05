#include "reading/Backgrounds.h"

#include <algorithm>

namespace brindlecam::Backgrounds {

namespace {

using Region = ColourRegions::Region;

// All in pixels.
constexpr int kLeastSquare = 7;
constexpr int kLeastContact = 16;
constexpr double kContactOfPerimeter = 0.05;
constexpr double kLargeShare = 0.12; ///< of the picture: a background even without a square
constexpr int kLeastInnerWidth = 22;
constexpr int kLeastInnerHeight = 14;
constexpr double kSquareOfShortSide = 0.35; ///< less is the stroke of a heading
constexpr int kSurelyNoStroke = 160;        ///< short side
constexpr int kLeastHoles = 8;              ///< room for what is written on it

bool reachesEdge(const Region& region, QSize size)
{
    if (region.contact == 0)
        return false;
    const int perimeter = 2 * (size.width() + size.height());
    const double pixels = static_cast<double>(size.width()) * size.height();
    return (region.square >= kLeastSquare &&
            region.contact >= std::max<double>(kLeastContact, kContactOfPerimeter * perimeter)) ||
           region.area >= kLargeShare * pixels;
}

bool carriesText(const ColourRegions& regions, int index)
{
    const Region& region = regions.regions()[index];
    if (region.square < kLeastSquare || region.box.width() < kLeastInnerWidth ||
        region.box.height() < kLeastInnerHeight)
        return false;
    const int shortSide = std::min(region.box.width(), region.box.height());
    return (region.square >= kSquareOfShortSide * shortSide || shortSide >= kSurelyNoStroke) &&
           regions.holes(index) >= kLeastHoles;
}

} // namespace

std::vector<bool> among(const ColourRegions& regions, QSize size, StopRequest stop)
{
    const std::vector<Region>& all = regions.regions();
    std::vector<bool> chosen(all.size());
    bool any = false;
    for (std::size_t i = 0; i < all.size(); ++i) {
        stop.check();
        chosen[i] = reachesEdge(all[i], size) || carriesText(regions, static_cast<int>(i));
        any = any || chosen[i];
    }
    if (!any && !all.empty()) {
        const auto largest =
            std::max_element(all.begin(), all.end(),
                             [](const Region& a, const Region& b) { return a.area < b.area; });
        chosen[largest - all.begin()] = true;
    }
    return chosen;
}

} // namespace brindlecam::Backgrounds
