#include "long/DisplacementSearch.h"

#include "long/RowSignature.h"
#include "long/WideRegisters.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace brindlecam::DisplacementSearch {

namespace {

constexpr int kCompared = 15;       ///< stretches of a row
constexpr int kMostOfStillRow = 59; ///< sum of differences
constexpr double kMostCost = 1.6;   ///< mean difference per stretch
constexpr int kLeastMargin = 24;    ///< rows of overlap that a displacement must leave
constexpr int kLargeRegion = 192;   ///< rows from which on the margin is a share of the region
constexpr int kMarginShare = 8;     ///< one of so many
constexpr int kStep = 2;            ///< every second row is compared

/// The signatures of a frame.
struct Rows {
    const std::uint8_t* first;

    [[nodiscard]] const std::uint8_t* at(int row) const
    {
        return first + static_cast<std::ptrdiff_t>(row) * RowSignature::kBytes;
    }
};

int difference(const std::uint8_t* a, const std::uint8_t* b)
{
    int sum = 0;
    for (int i = 0; i < kCompared; ++i)
        sum += std::abs(a[i] - b[i]);
    return sum;
}

// Sums of differences over `count` rows, every kStep-th from `a` and `b` on. Once a sum is more
// than `most`, which it can't fall below again, the rest need not be added.

std::int64_t plainSum(const std::uint8_t* a, const std::uint8_t* b, int count, std::int64_t most)
{
    std::int64_t sum = 0;
    for (int i = 0; i < count && sum <= most; ++i) {
        sum += difference(a, b);
        a += kStep * RowSignature::kBytes;
        b += kStep * RowSignature::kBytes;
    }
    return sum;
}

#ifdef __SSE2__

std::int64_t vectorSum(const std::uint8_t* a, const std::uint8_t* b, int count, std::int64_t most)
{
    constexpr int kRowsBetweenLooks = 8;
    const __m128i compared =
        _mm_set_epi8(0, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
    __m128i sums = _mm_setzero_si128();
    std::int64_t sum = 0;
    for (int i = 0; i < count && sum <= most;) {
        const int end = std::min(i + kRowsBetweenLooks, count);
        for (; i < end; ++i) {
            const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
            const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
            sums = _mm_add_epi64(
                sums, _mm_sad_epu8(_mm_and_si128(left, compared), _mm_and_si128(right, compared)));
            a += kStep * RowSignature::kBytes;
            b += kStep * RowSignature::kBytes;
        }
        alignas(16) std::int64_t halves[2];
        _mm_store_si128(reinterpret_cast<__m128i*>(halves), sums);
        sum = halves[0] + halves[1];
    }
    return sum;
}

#endif

std::int64_t sumOf(const std::uint8_t* a, const std::uint8_t* b, int count, std::int64_t most,
                   [[maybe_unused]] Kernel kernel)
{
#ifdef __SSE2__
    if (kernel == Kernel::vector)
        return vectorSum(a, b, count, most);
#endif
    return plainSum(a, b, count, most);
}

int marginOf(int region)
{
    return region >= kLargeRegion ? region / kMarginShare : kLeastMargin;
}

/// The cheapest displacement of what lies between top and bottom; of several the smallest.
Displacement cheapest(Rows before, Rows now, int height, Displacement place, Kernel kernel)
{
    double best = std::numeric_limits<double>::max();
    const int most = place.region - marginOf(place.region);
    // Nothing is cheaper than what costs nothing.
    for (int rows = 1; rows <= most && best > 0; ++rows) {
        const int count = (height - place.bottom - rows - place.top + 1) / kStep;
        const double compared = static_cast<double>(kCompared) * count;
        const double budget = std::min(best, kMostCost) * compared;
        // Sums are whole numbers: none lies between the budget and the whole number below it.
        const auto whole = static_cast<std::int64_t>(budget);
        const std::int64_t sum =
            sumOf(before.at(place.top + rows), now.at(place.top), count, whole, kernel);
        const double cost = static_cast<double>(sum) / compared;
        if (sum <= whole && cost < best) {
            best = cost;
            place.rows = rows;
        }
    }
    if (place.rows < 1)
        return place;
    place.outcome = Displacement::Outcome::found;
    place.cost = best;
    return place;
}

} // namespace

Displacement find(const std::uint8_t* before, const std::uint8_t* now, int height, Kernel kernel)
{
    forgetWideRegisters();
    const Rows old{before};
    const Rows present{now};
    const auto moved = [&](int row) {
        return difference(old.at(row), present.at(row)) > kMostOfStillRow;
    };
    Displacement place;
    while (place.top < height && !moved(place.top))
        ++place.top;
    if (place.top == height)
        return {};
    while (place.bottom < height - place.top && !moved(height - 1 - place.bottom))
        ++place.bottom;
    place.region = height - place.bottom - place.top;
    if (marginOf(place.region) + 1 >= place.region) {
        place.outcome = Displacement::Outcome::tooSmall;
        return place;
    }
    place.outcome = Displacement::Outcome::unknown;
    return cheapest(old, present, height, place, kernel);
}

} // namespace brindlecam::DisplacementSearch
