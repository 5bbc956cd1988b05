#include "pictures/Rendered.h"

#include "pictures/TiffWriter.h"

#include <cmath>

namespace brindlecam {

namespace {

constexpr qreal kPointsPerMetre = 72 / 0.0254;

} // namespace

int Rendered::dotsPerMetre() const
{
    const qreal pixelsPerPoint =
        image.isNull() || pointSize.isEmpty() ? 1 : image.width() / pointSize.width();
    return static_cast<int>(std::lround(pixelsPerPoint * kPointsPerMetre));
}

QByteArray Rendered::tiffData() const
{
    return TiffWriter::encode(image, dotsPerMetre());
}

} // namespace brindlecam
