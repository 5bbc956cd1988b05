#include "pictures/Dimming.h"

#include <cstdint>

namespace brindlecam::Dimming {

namespace {

// 0.55 as a fraction of 256: 140.8. Red and blue are scaled together, green apart, so a row is a
// plain loop over words that the compiler turns into vector code.
constexpr std::uint32_t kKept = 141;
constexpr std::uint32_t kOpaque = 0xff000000U;

std::uint32_t dimmedPixel(std::uint32_t pixel)
{
    const std::uint32_t redBlue = ((pixel & 0x00ff00ffU) * kKept >> 8) & 0x00ff00ffU;
    const std::uint32_t green = ((pixel & 0x0000ff00U) * kKept >> 8) & 0x0000ff00U;
    return kOpaque | redBlue | green;
}

} // namespace

void dimRows(const QImage& bright, uchar* dimmed, qsizetype dimmedBytesPerLine, int firstRow,
             int rows)
{
    // Read once: through the picture the compiler would have to ask again after each pixel.
    const int width = bright.width();
    for (int y = firstRow; y < firstRow + rows; ++y) {
        const auto* source = reinterpret_cast<const std::uint32_t*>(bright.constScanLine(y));
        auto* target = reinterpret_cast<std::uint32_t*>(dimmed + y * dimmedBytesPerLine);
        for (int x = 0; x < width; ++x)
            target[x] = dimmedPixel(source[x]);
    }
}

QImage dimmedCopy(const QImage& bright)
{
    QImage dimmed(bright.size(), QImage::Format_RGB32);
    if (!dimmed.isNull())
        dimRows(bright, dimmed.bits(), dimmed.bytesPerLine(), 0, bright.height());
    return dimmed;
}

} // namespace brindlecam::Dimming
