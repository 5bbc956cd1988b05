#pragma once

#include <cstdint>

namespace brindlecam {

/// From 32-bit pixels (0xAARRGGBB, not premultiplied) to the bytes of a PNG row.
namespace RowPacking {

/// Three bytes per pixel: red, green, blue.
void packRgb(const std::uint32_t* pixels, int count, std::uint8_t* target);

/// Four bytes per pixel: red, green, blue, alpha.
void packRgba(const std::uint32_t* pixels, int count, std::uint8_t* target);

} // namespace RowPacking

} // namespace brindlecam
