#include "pictures/Crop.h"

namespace brindlecam {

QImage croppedView(const QImage& picture, const QRect& pixels)
{
    const QRect part = pixels.intersected(picture.rect());
    if (part.isEmpty())
        return {};
    if (part == picture.rect())
        return picture;
    if (picture.depth() != 32)
        return picture.copy(part);
    const uchar* first = picture.constScanLine(part.y()) + qsizetype(part.x()) * 4;
    auto* keptAlive = new QImage(picture);
    return QImage(
        first, part.width(), part.height(), picture.bytesPerLine(), picture.format(),
        [](void* owner) { delete static_cast<QImage*>(owner); }, keptAlive);
}

} // namespace brindlecam
