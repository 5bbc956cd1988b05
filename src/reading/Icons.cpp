#include "reading/Icons.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace brindlecam::Icons {

namespace {

// Pixels of the picture before it was enlarged.
constexpr double kLeastSide = 6;
constexpr double kMostSide = 48;
// Width to height.
constexpr double kNarrowest = 0.55;
constexpr double kWidest = 1.8;
// In heights of the small letters beside it.
constexpr double kLeastLeftGap = 1.2;
constexpr double kLeastRightGap = 0.75;
constexpr double kMostRightGap = 6;
constexpr double kCertainHeight = 1.6;
constexpr double kCertainWidth = 1.2;
constexpr double kPossibleLong = 1.5;
constexpr double kPossibleShort = 1.1;
/// Pixels of the enlarged picture between the parts of one drawing, one above the other. Dots join
/// their letters too, which does no harm.
constexpr int kStackedGap = 3;
/// Which of a row's spots, ordered by height, is as high as a small letter.
constexpr double kSmallLetter = 0.35;

int middle(const QRect& spot)
{
    return (spot.top() + spot.bottom()) / 2;
}

bool belongTogether(const QRect& a, const QRect& b)
{
    return a.adjusted(0, -kStackedGap, 0, kStackedGap).intersects(b);
}

/// One pass from left to right; a spot joins those it belongs together with. True when any did.
bool joinOnce(std::vector<QRect>& spots, StopRequest stop)
{
    std::sort(spots.begin(), spots.end(),
              [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
    std::vector<QRect> done;
    std::vector<QRect> open;
    bool joined = false;
    for (const QRect& spot : spots) {
        stop.check();
        QRect whole = spot;
        std::vector<QRect> still;
        for (const QRect& other : open) {
            if (other.right() < spot.left()) {
                done.push_back(other);
            } else if (belongTogether(other, whole)) {
                whole |= other;
                joined = true;
            } else {
                still.push_back(other);
            }
        }
        still.push_back(whole);
        open.swap(still);
    }
    done.insert(done.end(), open.begin(), open.end());
    spots.swap(done);
    return joined;
}

/// Spots that may be icons or letters, parts of one drawing as one, ordered from top to bottom.
std::vector<QRect> wholeSpots(const std::vector<QRect>& spots, double factor, StopRequest stop)
{
    std::vector<QRect> result;
    // Frames and rules hold text and would swallow it.
    for (const QRect& spot : spots) {
        if (spot.width() <= kMostSide * factor && spot.height() <= kMostSide * factor)
            result.push_back(spot);
    }
    while (joinOnce(result, stop)) {
    }
    std::sort(result.begin(), result.end(),
              [](const QRect& a, const QRect& b) { return middle(a) < middle(b); });
    return result;
}

bool hasIconShape(const QRect& spot, double factor)
{
    const double aspect = static_cast<double>(spot.width()) / spot.height();
    return std::min(spot.width(), spot.height()) >= kLeastSide * factor &&
           std::max(spot.width(), spot.height()) <= kMostSide * factor && aspect >= kNarrowest &&
           aspect <= kWidest;
}

/// What stands in one row with a spot.
struct Row {
    double smallLetter = 0; ///< height; 0: nothing else is there
    double leftGap = std::numeric_limits<double>::infinity();
    double rightGap = std::numeric_limits<double>::infinity();
};

Row rowOf(const QRect& spot, const std::vector<QRect>& ordered)
{
    Row row;
    std::vector<int> heights;
    auto other = std::lower_bound(ordered.begin(), ordered.end(), spot.top(),
                                  [](const QRect& each, int y) { return middle(each) < y; });
    for (; other != ordered.end() && middle(*other) <= spot.bottom(); ++other) {
        if (*other == spot)
            continue;
        heights.push_back(other->height());
        if (other->right() < spot.left())
            row.leftGap = std::min<double>(row.leftGap, spot.left() - other->right() - 1);
        else if (other->left() > spot.right())
            row.rightGap = std::min<double>(row.rightGap, other->left() - spot.right() - 1);
    }
    if (!heights.empty()) {
        const auto at = heights.begin() + static_cast<std::ptrdiff_t>(
                                              kSmallLetter * static_cast<double>(heights.size()));
        std::nth_element(heights.begin(), at, heights.end());
        row.smallLetter = *at;
    }
    return row;
}

} // namespace

Found among(const std::vector<QRect>& spots, double factor, StopRequest stop)
{
    Found found;
    const std::vector<QRect> ordered = wholeSpots(spots, factor, stop);
    for (const QRect& spot : ordered) {
        stop.check();
        if (!hasIconShape(spot, factor))
            continue;
        const Row row = rowOf(spot, ordered);
        const double letter = row.smallLetter;
        if (letter <= 0 || row.leftGap < kLeastLeftGap * letter ||
            row.rightGap < kLeastRightGap * letter || row.rightGap > kMostRightGap * letter)
            continue;
        const int longSide = std::max(spot.width(), spot.height());
        const int shortSide = std::min(spot.width(), spot.height());
        if (spot.height() >= kCertainHeight * letter && spot.width() >= kCertainWidth * letter)
            found.certain.push_back(spot);
        else if (longSide >= kPossibleLong * letter && shortSide >= kPossibleShort * letter)
            found.possible.push_back(spot);
    }
    return found;
}

void erase(QImage& grey, const std::vector<QRect>& places)
{
    constexpr int kWhite = 255;
    for (const QRect& place : places) {
        const QRect inside = place & grey.rect();
        for (int y = inside.top(); y <= inside.bottom(); ++y)
            std::memset(grey.scanLine(y) + inside.left(), kWhite, inside.width());
    }
}

} // namespace brindlecam::Icons
