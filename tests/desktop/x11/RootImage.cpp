#include "x11/RootImage.h"

#include "platform/x11/connection/X11.h"

namespace brindlecam::test {

QImage rootImage(const QRect& rect)
{
    const x11::Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        x11::connection(),
        xcb_get_image(x11::connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, x11::root(),
                      static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                      static_cast<std::uint16_t>(rect.width()),
                      static_cast<std::uint16_t>(rect.height()), ~0u),
        nullptr));
    if (!reply)
        return {};
    return QImage(xcb_get_image_data(reply.get()), rect.width(), rect.height(),
                  QImage::Format_RGB32)
        .copy();
}

} // namespace brindlecam::test
