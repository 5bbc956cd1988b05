#include "platform/x11/grab/X11Grabber.h"

#include "base/Text.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/ServerPixels.h"

#include <utility>

namespace brindlecam {

namespace {

/// The desktop as it is now; RandR changes it while we run.
QRect desktop()
{
    const x11::Owned<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
        x11::connection(), xcb_get_geometry(x11::connection(), x11::root()), nullptr));
    return reply ? QRect(0, 0, reply->width, reply->height) : QRect();
}

} // namespace

X11Grabber::X11Grabber(std::shared_ptr<ServerPixels> pixels)
    : m_pixels(std::move(pixels))
{
}

void X11Grabber::grabScreens(const std::vector<ScreenInfo>& screens, QObject*, Done done)
{
    const QRect all = desktop();
    std::vector<GrabbedScreen> grabbed;
    grabbed.reserve(screens.size());
    for (const auto& screen : screens) {
        if (screen.native.isEmpty() || !all.contains(screen.native))
            continue;
        auto picture = grab(screen.native);
        if (!picture) {
            done(picture.error());
            return;
        }
        grabbed.push_back({screen, std::move(picture).value()});
    }
    done(std::move(grabbed));
}

Result<QImage> X11Grabber::grabRegion(const QRect& native)
{
    if (native.isEmpty() || !desktop().contains(native))
        return Error{text("La zona está fuera de la pantalla.")};
    return grab(native);
}

Result<QImage> X11Grabber::grab(const QRect& native)
{
    if (m_pixels->format().format == QImage::Format_Invalid)
        return Error{text("La pantalla usa un formato de color desconocido.")};
    QImage picture;
    if (auto shared = m_pixels->read(native)) {
        picture = *std::move(shared);
    } else {
        auto image = grabThroughConnection(native);
        if (!image)
            return image;
        picture = std::move(image).value();
    }
    picture = converted(std::move(picture));
    if (picture.isNull())
        return Error{text("No hay memoria suficiente para la captura.")};
    return picture;
}

Result<QImage> X11Grabber::grabThroughConnection(const QRect& native) const
{
    const auto cookie =
        xcb_get_image(x11::connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, x11::root(),
                      static_cast<std::int16_t>(native.x()), static_cast<std::int16_t>(native.y()),
                      static_cast<std::uint16_t>(native.width()),
                      static_cast<std::uint16_t>(native.height()), x11::kAllPlanes);
    xcb_generic_error_t* failure = nullptr;
    x11::Owned<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(x11::connection(), cookie, &failure));
    const x11::Owned<xcb_generic_error_t> error(failure);
    const qsizetype bytesPerLine = m_pixels->format().bytesPerLine(native.width());
    if (!reply || xcb_get_image_data_length(reply.get()) < bytesPerLine * native.height()) {
        return Error{text("El servidor X no entregó la imagen (error %1).")
                         .arg(error ? error->error_code : 0)};
    }
    // The picture keeps the reply itself.
    uchar* const data = xcb_get_image_data(reply.get());
    return QImage(data, native.width(), native.height(), bytesPerLine, m_pixels->format().format,
                  std::free, reply.release());
}

QImage X11Grabber::converted(QImage image) const
{
    return m_pixels->format().isDirect() ? image
                                         : std::move(image).convertToFormat(QImage::Format_RGB32);
}

} // namespace brindlecam
