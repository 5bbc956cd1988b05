#pragma once

#include <cstddef>
#include <cstdint>

namespace brindlecam {

/// What is kept of a row of pixels to find it again elsewhere: the mean brightness of each of 16
/// stretches of it, as (red + 2 green + blue) / 4, rounded down. All stretches are as wide, but for
/// the last one, which takes the remainder; those that a narrow row has no pixels for are 0.
/// Pixels are 4 bytes, the second one green and the fourth ignored: red and blue may be in either
/// order. Rows follow each other without gaps. Any thread.
namespace RowSignature {

constexpr std::size_t kBytes = 16; ///< of a row's signature, a byte per stretch

/// How it is computed; the result is the same. Only for processors that have it.
enum class Kernel : std::uint8_t { plain, ssse3 };

/// The quickest one that this processor has.
[[nodiscard]] Kernel bestKernel();

/// Writes the signatures of `height` rows, kBytes each, to `signatures`.
void sign(const std::uint8_t* frame, int width, int height, std::uint8_t* signatures,
          Kernel kernel = bestKernel());

/// The same, and copies the rows to `target` on the way, which costs hardly more than to copy them.
/// The fourth byte of each pixel is 255 there.
void copyAndSign(const std::uint8_t* frame, int width, int height, std::uint8_t* target,
                 std::uint8_t* signatures, Kernel kernel = bestKernel());

} // namespace RowSignature

} // namespace brindlecam
