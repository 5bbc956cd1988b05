#include "x11/ports/Pattern.h"

#include <array>

namespace brindlecam::test {

QImage pattern()
{
    constexpr std::array<QRgb, 8> kColours{0xff000000, 0xffff0000, 0xff00ff00, 0xff0000ff,
                                           0xffffff00, 0xffff00ff, 0xff00ffff, 0xffffffff};
    QImage image(kDesktop, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = kColours[static_cast<std::size_t>((x + 3 * y + x / 97 + y / 61) % 8)];
    }
    return image;
}

} // namespace brindlecam::test
