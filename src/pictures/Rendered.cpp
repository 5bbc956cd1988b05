#include "pictures/Rendered.h"

#include "pictures/TiffWriter.h"

#include <atomic>
#include <cmath>
#include <mutex>

namespace brindlecam {

namespace {

constexpr qreal kPointsPerMetre = 72 / 0.0254;

} // namespace

/// What the copies of one picture share.
struct Rendered::Flattening {
    std::once_flag once;
    std::function<QImage()> flatten; ///< empty once the image is there
    QImage image;
    std::atomic<bool> done = false;
};

Rendered::Rendered(const QImage& image, QSizeF pointSize)
    : Rendered(image.size(), pointSize, [image] { return image; })
{
}

Rendered::Rendered(QSize pixels, QSizeF pointSize, std::function<QImage()> flatten)
    : m_pixels(pixels)
    , m_pointSize(pointSize)
    , m_flattening(std::make_shared<Flattening>())
{
    m_flattening->flatten = std::move(flatten);
}

QImage Rendered::image() const
{
    if (!m_flattening)
        return {};
    Flattening& shared = *m_flattening;
    std::call_once(shared.once, [&shared] {
        shared.image = shared.flatten();
        shared.flatten = nullptr; // the frozen screen it holds is no longer needed
        shared.done = true;
    });
    return shared.image;
}

bool Rendered::isFlattened() const
{
    return !m_flattening || m_flattening->done;
}

bool Rendered::isSame(const Rendered& other) const
{
    return m_flattening == other.m_flattening && m_pointSize == other.m_pointSize;
}

int Rendered::dotsPerMetre() const
{
    const qreal pixelsPerPoint =
        m_pixels.isEmpty() || m_pointSize.isEmpty() ? 1 : m_pixels.width() / m_pointSize.width();
    return static_cast<int>(std::lround(pixelsPerPoint * kPointsPerMetre));
}

QByteArray Rendered::tiffData() const
{
    return TiffWriter::encode(image(), dotsPerMetre());
}

} // namespace brindlecam
