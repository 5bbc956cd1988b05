#include "desktop/support/Screen.h"

#include "desktop/support/Patience.h"

namespace brindlecam::desktop {

QColor Screen::pixel(QPoint place) const
{
    const QImage image = grab(QRect(place, QSize(1, 1)));
    return image.isNull() ? QColor() : image.pixelColor(0, 0);
}

QImage Screen::grabAtRest() const
{
    QImage last = grab();
    const auto rests = [this, &last] {
        const QImage next = grab();
        const bool equal = next == last;
        last = next;
        return equal;
    };
    return waitUntil(rests) ? last : QImage();
}

} // namespace brindlecam::desktop
