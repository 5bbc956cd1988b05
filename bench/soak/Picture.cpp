#include "Picture.h"

#include "desktop/support/Pictures.h"

namespace brindlecam::soak {

Picture Picture::part(const QRect& where) const
{
    return {pixels.copy(where), (certain & where).translated(-where.topLeft())};
}

bool Picture::isShownBy(const QImage& image) const
{
    return !image.isNull() && desktop::difference(pixels, image, certain) == 0;
}

bool Picture::resembles(const QImage& image) const
{
    constexpr QSize kCells{8, 8};
    constexpr int kMuch = 32; // of a channel
    const auto fromAfar = [&](const QImage& of) {
        return of.convertToFormat(QImage::Format_RGB32)
            .scaled(kCells, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QRect middle = QRect(QPoint(), kCells).adjusted(1, 1, -1, -1);
    return desktop::difference(fromAfar(pixels), fromAfar(image), middle) < kMuch;
}

} // namespace brindlecam::soak
