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

void dim(const QImage& bright, const QRect& part, uchar* dimmed, qsizetype dimmedBytesPerLine)
{
    // Read once: through the rectangle the compiler would have to ask again after each pixel.
    const int width = part.width();
    for (int row = 0; row < part.height(); ++row) {
        const auto* source =
            reinterpret_cast<const std::uint32_t*>(bright.constScanLine(part.y() + row)) + part.x();
        auto* target = reinterpret_cast<std::uint32_t*>(dimmed + row * dimmedBytesPerLine);
        for (int x = 0; x < width; ++x)
            target[x] = dimmedPixel(source[x]);
    }
}

QImage dimmedCopy(const QImage& bright)
{
    return dimmedCopy(bright, bright.rect());
}

QImage dimmedCopy(const QImage& bright, const QRect& part)
{
    QImage dimmed(part.size(), QImage::Format_RGB32);
    if (!dimmed.isNull())
        dim(bright, part, dimmed.bits(), dimmed.bytesPerLine());
    return dimmed;
}

} // namespace brindlecam::Dimming
