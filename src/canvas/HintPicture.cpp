#include "canvas/HintPicture.h"

#include "canvas/Hint.h"

#include <QPainter>

namespace brindlecam {

HintPicture::HintPicture(QSizeF canvas, qreal scale)
    : m_scale(scale)
{
    const QRectF hint = Hint::rect(canvas);
    const QRect pixels = QRectF(hint.topLeft() * scale, hint.size() * scale).toAlignedRect();
    m_pixel = pixels.topLeft();
    m_image = QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    m_image.fill(Qt::transparent);
    QPainter painter(&m_image);
    painter.translate(-m_pixel);
    painter.scale(scale, scale);
    Hint::paint(painter, canvas);
}

void HintPicture::paint(QPainter& painter) const
{
    painter.save();
    painter.scale(1 / m_scale, 1 / m_scale);
    painter.drawImage(m_pixel, m_image);
    painter.restore();
}

} // namespace brindlecam
