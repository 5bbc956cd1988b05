#include "platform/x11/grab/ConnectionPixels.h"

#include "base/Text.h"

#include <cstdlib>

namespace brindlecam::ConnectionPixels {

xcb_get_image_cookie_t request(const x11::RootAccess& access, xcb_drawable_t source,
                               const QRect& rect)
{
    return xcb_get_image(access.connection, XCB_IMAGE_FORMAT_Z_PIXMAP, source,
                         static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                         static_cast<std::uint16_t>(rect.width()),
                         static_cast<std::uint16_t>(rect.height()), x11::kAllPlanes);
}

Result<QImage> receive(const x11::RootAccess& access, const RootFormat& format, QSize size,
                       xcb_get_image_cookie_t cookie)
{
    xcb_generic_error_t* failure = nullptr;
    x11::Owned<xcb_get_image_reply_t> reply(
        static_cast<xcb_get_image_reply_t*>(access.awaitReply(cookie.sequence, &failure)));
    const x11::Owned<xcb_generic_error_t> error(failure);
    const qsizetype bytesPerLine = format.bytesPerLine(size.width());
    if (!reply || xcb_get_image_data_length(reply.get()) < bytesPerLine * size.height()) {
        return Error{text("El servidor X no entregó la imagen (error %1).")
                         .arg(error ? error->error_code : 0)};
    }
    // The picture keeps the reply itself.
    uchar* const data = xcb_get_image_data(reply.get());
    return QImage(data, size.width(), size.height(), bytesPerLine, format.format, std::free,
                  reply.release());
}

} // namespace brindlecam::ConnectionPixels
