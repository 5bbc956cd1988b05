#include "pictures/RowPacking.h"

namespace brindlecam::RowPacking {

void packRgb(const std::uint32_t* pixels, int count, std::uint8_t* __restrict target)
{
    for (int x = 0; x < count; ++x) {
        target[3 * x] = static_cast<std::uint8_t>(pixels[x] >> 16);
        target[3 * x + 1] = static_cast<std::uint8_t>(pixels[x] >> 8);
        target[3 * x + 2] = static_cast<std::uint8_t>(pixels[x]);
    }
}

void packRgba(const std::uint32_t* pixels, int count, std::uint8_t* __restrict target)
{
    for (int x = 0; x < count; ++x) {
        target[4 * x] = static_cast<std::uint8_t>(pixels[x] >> 16);
        target[4 * x + 1] = static_cast<std::uint8_t>(pixels[x] >> 8);
        target[4 * x + 2] = static_cast<std::uint8_t>(pixels[x]);
        target[4 * x + 3] = static_cast<std::uint8_t>(pixels[x] >> 24);
    }
}

} // namespace brindlecam::RowPacking
