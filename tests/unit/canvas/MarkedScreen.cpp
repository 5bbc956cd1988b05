#include "MarkedScreen.h"

#include "base/Geometry.h"

#include <QPainter>

namespace brindlecam::test {

QImage frozenScreen(qreal scale)
{
    QImage picture((QSizeF(kMarkedPoints) * scale).toSize(), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x * 3 % 256, y * 5 % 256, (x + y) % 256));
    }
    return picture;
}

MarkedScreen::MarkedScreen(const QImage& frozen)
    : m_frozen(frozen)
    , m_screen(frozen.copy())
{
}

void MarkedScreen::repaint(MarkedPicture& picture, const QRegion& exposed)
{
    QPainter painter(&m_screen);
    for (const QRect& rect : exposed)
        painter.drawImage(rect.topLeft(), m_frozen, rect);
    const PixelsPerPoint ratio = pixelsPerPoint(kMarkedPoints, m_frozen.size());
    painter.scale(ratio.x, ratio.y);
    picture.paint(painter, exposed);
}

bool MarkedScreen::follows(MarkedPicture& picture, const AnnotationList& list)
{
    repaint(picture, picture.setMarks(list.marks()));
    return m_screen == flattened(m_frozen, kMarkedPoints, m_frozen.rect(), list.marks());
}

} // namespace brindlecam::test
