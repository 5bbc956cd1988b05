#include "long/RowSignature.h"

#include "long/WideRegisters.h"

#include <algorithm>
#include <bit>
#include <cstring>

#if defined(__x86_64__) || defined(__i386__)
#define BRINDLECAM_HAS_SSSE3
#include <tmmintrin.h>
#endif

namespace brindlecam::RowSignature {

namespace {

constexpr std::size_t kPixel = 4; ///< bytes
constexpr std::uint32_t kOpaque =
    std::endian::native == std::endian::little ? 0xff000000U : 0x000000ffU;

/// A stretch of a row, in pixels.
struct Stretch {
    std::size_t first;
    std::size_t count;
};

/// How rows of one width are cut.
class Stretches final {
public:
    explicit Stretches(std::size_t width)
        : m_width(width)
        , m_usual(width < kBytes ? 1 : width / kBytes)
    {
    }

    [[nodiscard]] Stretch at(std::size_t index) const
    {
        const std::size_t first = std::min(index * m_usual, m_width);
        const std::size_t end = index + 1 == kBytes ? m_width : std::min(first + m_usual, m_width);
        return {first, end - first};
    }

private:
    std::size_t m_width;
    std::size_t m_usual;
};

/// Sum of red + 2 green + blue.
std::uint32_t plainSum(const std::uint8_t* pixels, std::size_t count)
{
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, pixels + i * kPixel, kPixel);
        if constexpr (std::endian::native == std::endian::big)
            pixel >>= 8;
        sum += (pixel & 0xff) + 2 * ((pixel >> 8) & 0xff) + ((pixel >> 16) & 0xff);
    }
    return sum;
}

void copyPixels(const std::uint8_t* __restrict pixels, std::size_t count,
                std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, pixels + i * kPixel, kPixel);
        pixel |= kOpaque;
        std::memcpy(target + i * kPixel, &pixel, kPixel);
    }
}

#ifdef BRINDLECAM_HAS_SSSE3

constexpr std::size_t kBlock = 4; ///< pixels in a register
/// So many sums of at most 3 × 255 fit into 15 bits.
constexpr std::size_t kBlocksPerPart = 42;

/// With a copy, `target` must lie at a whole block's address.
template <bool kCopies>
__attribute__((target("ssse3"))) std::uint32_t
ssse3Sum(const std::uint8_t* pixels, std::size_t count, [[maybe_unused]] std::uint8_t* target)
{
    const __m128i weights = _mm_set1_epi32(0x00010201);
    const __m128i opaque = _mm_set1_epi32(static_cast<int>(kOpaque));
    const __m128i ones = _mm_set1_epi16(1);
    __m128i sums = _mm_setzero_si128();
    std::size_t blocks = count / kBlock;
    while (blocks > 0) {
        const std::size_t now = std::min(blocks, kBlocksPerPart);
        blocks -= now;
        __m128i part = _mm_setzero_si128();
        for (std::size_t i = 0; i < now; ++i) {
            const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
            if constexpr (kCopies) {
                // Past the caches: what is overwritten need not be read for it first.
                _mm_stream_si128(reinterpret_cast<__m128i*>(target), _mm_or_si128(block, opaque));
                target += sizeof block;
            }
            part = _mm_add_epi16(part, _mm_maddubs_epi16(block, weights));
            pixels += sizeof block;
        }
        sums = _mm_add_epi32(sums, _mm_madd_epi16(part, ones));
    }
    if constexpr (kCopies)
        copyPixels(pixels, count % kBlock, target);
    sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(1, 0, 3, 2)));
    sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(2, 3, 0, 1)));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(sums)) + plainSum(pixels, count % kBlock);
}

std::uint32_t ssse3CopySum(const std::uint8_t* pixels, std::size_t count, std::uint8_t* target)
{
    const auto address = reinterpret_cast<std::uintptr_t>(target);
    if (address % kPixel != 0) {
        copyPixels(pixels, count, target);
        return ssse3Sum<false>(pixels, count, nullptr);
    }
    const std::size_t before = std::min<std::size_t>((0 - address / kPixel) % kBlock, count);
    copyPixels(pixels, before, target);
    return plainSum(pixels, before) +
           ssse3Sum<true>(pixels + before * kPixel, count - before, target + before * kPixel);
}

#endif

/// `sum` answers the sum of the stretch that begins at that pixel of the frame.
template <typename Sum>
void signEach(int width, int height, std::uint8_t* signatures, Sum sum)
{
    const auto rowPixels = static_cast<std::size_t>(width);
    const Stretches stretches(rowPixels);
    for (std::size_t row = 0; row < static_cast<std::size_t>(height); ++row) {
        for (std::size_t i = 0; i < kBytes; ++i) {
            const auto [first, count] = stretches.at(i);
            const auto pixels = static_cast<std::uint32_t>(count);
            *signatures++ =
                pixels == 0
                    ? std::uint8_t{0}
                    : static_cast<std::uint8_t>(sum(row * rowPixels + first, count) / (4 * pixels));
        }
    }
}

} // namespace

Kernel bestKernel()
{
#ifdef BRINDLECAM_HAS_SSSE3
    static const bool has = __builtin_cpu_supports("ssse3") != 0;
    if (has)
        return Kernel::ssse3;
#endif
    return Kernel::plain;
}

void sign(const std::uint8_t* frame, int width, int height, std::uint8_t* signatures,
          [[maybe_unused]] Kernel kernel)
{
    forgetWideRegisters();
#ifdef BRINDLECAM_HAS_SSSE3
    if (kernel == Kernel::ssse3) {
        signEach(width, height, signatures, [frame](std::size_t first, std::size_t count) {
            return ssse3Sum<false>(frame + first * kPixel, count, nullptr);
        });
        return;
    }
#endif
    signEach(width, height, signatures, [frame](std::size_t first, std::size_t count) {
        return plainSum(frame + first * kPixel, count);
    });
}

void copyAndSign(const std::uint8_t* frame, int width, int height, std::uint8_t* target,
                 std::uint8_t* signatures, [[maybe_unused]] Kernel kernel)
{
    forgetWideRegisters();
#ifdef BRINDLECAM_HAS_SSSE3
    if (kernel == Kernel::ssse3) {
        signEach(width, height, signatures, [frame, target](std::size_t first, std::size_t count) {
            return ssse3CopySum(frame + first * kPixel, count, target + first * kPixel);
        });
        _mm_sfence(); // whoever is told of the copy shall see it
        return;
    }
#endif
    signEach(width, height, signatures, [frame, target](std::size_t first, std::size_t count) {
        copyPixels(frame + first * kPixel, count, target + first * kPixel);
        return plainSum(frame + first * kPixel, count);
    });
}

} // namespace brindlecam::RowSignature
