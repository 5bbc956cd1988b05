#include "pictures/RowFilter.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace brindlecam {

namespace {

constexpr std::size_t kRowsPerChoice = 4;
constexpr std::size_t kFlatRun = 16;       ///< pixels of one colour in a row, on average
constexpr std::size_t kJump = 8;           ///< mean difference of samples that no gradient makes
constexpr std::uint32_t kRoughSample = 10; ///< mean error of the best prediction

// The loops below are written so that the compiler turns them into vector code: one pointer per
// neighbour, 16-bit arithmetic, no branches.

std::uint8_t paethPrediction(std::uint8_t left, std::uint8_t above, std::uint8_t aboveLeft)
{
    const auto towardsLeft = static_cast<std::int16_t>(above - aboveLeft);
    const auto towardsAbove = static_cast<std::int16_t>(left - aboveLeft);
    const auto leftDistance = static_cast<std::int16_t>(std::abs(towardsLeft));
    const auto aboveDistance = static_cast<std::int16_t>(std::abs(towardsAbove));
    const auto bothDistance =
        static_cast<std::int16_t>(std::abs(static_cast<std::int16_t>(towardsLeft + towardsAbove)));
    const std::uint8_t other = aboveDistance <= bothDistance ? above : aboveLeft;
    return leftDistance <= aboveDistance && leftDistance <= bothDistance ? left : other;
}

/// What is left of a sample, as the distance from 0 that a small number of bits can say.
std::uint32_t cost(std::uint8_t difference)
{
    return static_cast<std::uint32_t>(std::abs(static_cast<std::int8_t>(difference)));
}

template <typename Predict>
std::uint32_t costOf(std::size_t count, const RowNeighbours& at, Predict predict)
{
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += cost(static_cast<std::uint8_t>(at.row[i] - predict(at, i)));
    return sum;
}

template <typename Predict>
void filterInto(std::uint8_t* __restrict target, std::size_t count, const RowNeighbours& at,
                Predict predict)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] = static_cast<std::uint8_t>(at.row[i] - predict(at, i));
}

constexpr auto kNothing = [](const RowNeighbours&, std::size_t) { return std::uint8_t{0}; };
constexpr auto kLeft = [](const RowNeighbours& at, std::size_t i) { return at.left[i]; };
constexpr auto kAbove = [](const RowNeighbours& at, std::size_t i) { return at.above[i]; };
constexpr auto kPaeth = [](const RowNeighbours& at, std::size_t i) {
    return paethPrediction(at.left[i], at.above[i], at.aboveLeft[i]);
};

/// What tells drawn rows from photographed ones.
struct Look {
    std::size_t changes = 0; ///< pixels unlike the one before them
    std::size_t colours = 0; ///< different colours among them, roughly
    std::uint32_t jumps = 0; ///< sum of the sample differences at those changes
};

// Put together in a register: memcpy() into a word would wait for the store of each part.
template <std::size_t kBytes>
std::uint32_t pixelAt(const std::uint8_t* samples)
{
    std::uint32_t pixel = 0;
    for (std::size_t i = 0; i < kBytes; ++i)
        pixel |= static_cast<std::uint32_t>(samples[i]) << (8 * i);
    return pixel;
}

template <std::size_t kBytes>
Look lookOf(const std::uint8_t* row, std::size_t rowBytes)
{
    constexpr std::uint32_t kGoldenRatio = 2654435769U;
    constexpr int kSlotBits = 11;
    std::array<std::uint32_t, 1U << kSlotBits> seen{};

    Look look;
    std::uint32_t last = pixelAt<kBytes>(row);
    for (std::size_t i = kBytes; i < rowBytes; i += kBytes) {
        const std::uint32_t colour = pixelAt<kBytes>(row + i);
        if (colour == last)
            continue;
        last = colour;
        ++look.changes;
        // Two colours of one slot may be counted again and again; the answer stays good enough.
        std::uint32_t& slot = seen[(colour * kGoldenRatio) >> (32 - kSlotBits)];
        if (slot != colour + 1) {
            slot = colour + 1;
            ++look.colours;
        }
        for (std::size_t j = i; j < i + kBytes; ++j)
            look.jumps += static_cast<std::uint32_t>(std::abs(row[j] - row[j - kBytes]));
    }
    return look;
}

Look lookOf(const std::uint8_t* row, std::size_t rowBytes, std::size_t bytesPerPixel)
{
    switch (bytesPerPixel) {
    case 1:
        return lookOf<1>(row, rowBytes);
    case 3:
        return lookOf<3>(row, rowBytes);
    default:
        return lookOf<4>(row, rowBytes);
    }
}

} // namespace

RowFilter::RowFilter(std::size_t rowBytes, std::size_t bytesPerPixel)
    : m_rowBytes(rowBytes)
    , m_bytesPerPixel(bytesPerPixel)
    , m_row(bytesPerPixel + rowBytes)
    , m_above(bytesPerPixel + rowBytes)
{
}

std::uint8_t* RowFilter::nextRow()
{
    return m_row.data() + m_bytesPerPixel;
}

void RowFilter::write(std::uint8_t* target)
{
    if (m_rowNumber++ % kRowsPerChoice == 0)
        m_kind = chosenKind();

    const RowNeighbours at = neighbours();
    *target++ = static_cast<std::uint8_t>(m_kind);
    switch (m_kind) {
    case Kind::none:
        std::memcpy(target, at.row, m_rowBytes);
        break;
    case Kind::sub:
        filterInto(target, m_rowBytes, at, kLeft);
        break;
    case Kind::up:
        filterInto(target, m_rowBytes, at, kAbove);
        break;
    case Kind::paeth:
        filterInto(target, m_rowBytes, at, kPaeth);
        break;
    }
    std::swap(m_row, m_above);
}

RowFilter::Kind RowFilter::chosenKind() const
{
    const Look look = lookOf(m_row.data() + m_bytesPerPixel, m_rowBytes, m_bytesPerPixel);
    const std::size_t pixels = m_rowBytes / m_bytesPerPixel;
    const bool isFlat = look.changes * kFlatRun < pixels;
    const bool isSparse = look.changes * 2 < pixels;
    const bool jumps = look.jumps > kJump * look.changes * m_bytesPerPixel;
    if (isFlat || (isSparse && (jumps || look.colours * 5 <= look.changes * 4)))
        return Kind::none;

    const RowNeighbours at = neighbours();
    const std::array costs{std::pair(costOf(m_rowBytes, at, kAbove), Kind::up),
                           std::pair(costOf(m_rowBytes, at, kLeft), Kind::sub),
                           std::pair(costOf(m_rowBytes, at, kPaeth), Kind::paeth),
                           std::pair(costOf(m_rowBytes, at, kNothing), Kind::none)};
    const auto cheaper = [](const auto& a, const auto& b) { return a.first < b.first; };
    const auto [cost, kind] = *std::min_element(costs.begin(), costs.end(), cheaper);
    // Dense text changes at most pixels too, but between few colours and in jumps no filter
    // foresees.
    const bool isRough = cost > kRoughSample * m_rowBytes;
    return isRough && look.colours * 2 <= look.changes ? Kind::none : kind;
}

RowNeighbours RowFilter::neighbours() const
{
    return {m_row.data() + m_bytesPerPixel, m_row.data(), m_above.data() + m_bytesPerPixel,
            m_above.data()};
}

} // namespace brindlecam
