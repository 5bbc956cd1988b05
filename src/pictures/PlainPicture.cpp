#include "pictures/PlainPicture.h"

#include <cstdint>

namespace brindlecam {

namespace {

constexpr std::uint32_t kAlpha = 0xff000000U;

bool isWordPerPixel(QImage::Format format)
{
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32 ||
           format == QImage::Format_ARGB32_Premultiplied;
}

bool isOpaqueRow(const std::uint32_t* pixels, int count)
{
    std::uint32_t common = kAlpha;
    for (int x = 0; x < count; ++x)
        common &= pixels[x];
    return common == kAlpha;
}

} // namespace

bool isOpaque(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return true;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
        if (!isOpaqueRow(row, image.width()))
            return false;
    }
    return true;
}

QImage plainPicture(const QImage& image)
{
    if (!isWordPerPixel(image.format())) {
        const QImage converted = image.convertToFormat(
            image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
        return converted.format() == QImage::Format_ARGB32 && isOpaque(converted)
                   ? converted.convertToFormat(QImage::Format_RGB32)
                   : converted;
    }
    if (!isOpaque(image))
        return image.convertToFormat(QImage::Format_ARGB32);
    if (image.format() == QImage::Format_RGB32)
        return image;
    return {image.constBits(), image.width(), image.height(), image.bytesPerLine(),
            QImage::Format_RGB32};
}

} // namespace brindlecam
