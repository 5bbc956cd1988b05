#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

#include <random>

namespace brindlecam::test {

/// A page of which no two places look alike.
inline QImage paintedPage(QSize size, unsigned seed = 1)
{
    QImage page(size, QImage::Format_RGB32);
    std::mt19937 random(seed);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); x += 4) {
            const QRgb colour = 0xff000000U | (random() & 0xffffffU);
            for (int i = x; i < std::min(x + 4, size.width()); ++i)
                page.setPixel(i, y, colour);
        }
    }
    return page;
}

/// What a rectangle of that height shows of a page that is scrolled so far.
inline QImage scrolledTo(const QImage& page, int top, int height)
{
    return page.copy(0, top, page.width(), height);
}

} // namespace brindlecam::test
