#pragma once

#include <cstdint>

namespace brindlecam {

/// What became of the content between two frames.
struct Displacement {
    enum class Outcome : std::uint8_t {
        still,    ///< every row is as it was
        tooSmall, ///< what moved is too low to be found again
        unknown,  ///< no displacement is credible
        found,
    };
    Outcome outcome = Outcome::still;
    int rows = 0;    ///< how far the content moved up; when found
    double cost = 0; ///< mean difference per stretch compared; when found
    // In rows of the frame; when not still:
    int top = 0;    ///< did not move
    int bottom = 0; ///< did not move
    int region = 0; ///< what lies between

    bool operator==(const Displacement&) const = default;
};

/// Finds how far content was scrolled, by the signatures of two frames of `height` rows. The last
/// stretch of each row is never compared: a scroll bar may move there. Any thread.
namespace DisplacementSearch {

/// How it is computed; the result is the same. Where there is no vector code both are plain.
enum class Kernel : std::uint8_t { plain, vector };

[[nodiscard]] Displacement find(const std::uint8_t* before, const std::uint8_t* now, int height,
                                Kernel kernel = Kernel::vector);

} // namespace DisplacementSearch

} // namespace brindlecam
