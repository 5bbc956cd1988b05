#include "pins/PinPicture.h"

#include <QPainter>

namespace brindlecam {

namespace {

QImage prepared(QImage image)
{
    image.setDevicePixelRatio(1);
    const auto format =
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    return image.format() == format ? image : image.convertToFormat(format);
}

/// Half as large: each pixel the mean of four.
QImage halved(const QImage& image)
{
    return image.scaled((image.width() + 1) / 2, (image.height() + 1) / 2, Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

} // namespace

PinPicture::PinPicture(const QImage& image)
    : m_levels{prepared(image)}
{
}

const QImage& PinPicture::sourceFor(int width) const
{
    std::size_t level = 0;
    while (2 * width < m_levels[level].width()) {
        if (level + 1 == m_levels.size())
            m_levels.push_back(halved(m_levels[level]));
        ++level;
    }
    return m_levels[level];
}

void PinPicture::paint(QPainter& painter, const QRect& target) const
{
    const QImage& source = sourceFor(target.width());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, target.size() != source.size());
    painter.drawImage(target, source);
}

} // namespace brindlecam
