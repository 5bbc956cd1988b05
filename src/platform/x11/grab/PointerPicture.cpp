#include "platform/x11/grab/PointerPicture.h"

#include <QPainter>

namespace brindlecam {

PointerPicture PointerPicture::of(const xcb_xfixes_get_cursor_image_reply_t& reply)
{
    const auto* const pixels = xcb_xfixes_get_cursor_image_cursor_image(&reply);
    const QImage image(reinterpret_cast<const uchar*>(pixels), reply.width, reply.height,
                       QImage::Format_ARGB32_Premultiplied);
    return {image.copy(), QPoint(reply.x, reply.y) - QPoint(reply.xhot, reply.yhot)};
}

void PointerPicture::paintInto(QImage& picture, QPoint origin) const
{
    const QPoint place = topLeft - origin;
    if (!picture.rect().intersects({place, image.size()}))
        return;
    QPainter(&picture).drawImage(place, image);
}

} // namespace brindlecam
