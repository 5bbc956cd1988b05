#include "platform/linux/x11/X11Grabber.h"

#include "base/Text.h"
#include "pictures/Dimming.h"
#include "platform/linux/x11/BandedGrab.h"
#include "platform/linux/x11/X11.h"

#include <utility>

namespace brindlecam {

namespace {

bool canShareMemory()
{
    auto* const connection = x11::connection();
    const auto* const extension = xcb_get_extension_data(connection, &xcb_shm_id);
    if (!extension || !extension->present)
        return false;
    const x11::Owned<xcb_shm_query_version_reply_t> version(
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
    // Descriptors are accepted since 1.2.
    using Version = std::pair<int, int>;
    return version && Version(version->major_version, version->minor_version) >= Version(1, 2);
}

/// The desktop as it is now; RandR changes it while we run.
QRect desktop()
{
    const x11::Owned<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
        x11::connection(), xcb_get_geometry(x11::connection(), x11::root()), nullptr));
    return reply ? QRect(0, 0, reply->width, reply->height) : QRect();
}

} // namespace

X11Grabber::X11Grabber()
    : m_store(x11::connection())
    , m_format(RootFormat::of(*xcb_get_setup(x11::connection()), x11::screen()))
    , m_hasSharedMemory(canShareMemory())
{
}

void X11Grabber::grabScreens(const std::vector<ScreenInfo>& screens, GrabOptions options, Done done)
{
    const QRect all = desktop();
    std::vector<GrabbedScreen> grabbed;
    grabbed.reserve(screens.size());
    for (const auto& screen : screens) {
        if (screen.native.isEmpty() || !all.contains(screen.native))
            continue;
        auto picture = grab(screen.native, options);
        if (!picture) {
            done(picture.error());
            return;
        }
        auto [image, dimmed] = std::move(picture).value();
        grabbed.push_back({screen, std::move(image), std::move(dimmed)});
    }
    done(std::move(grabbed));
}

Result<QImage> X11Grabber::grabRegion(const QRect& native)
{
    if (native.isEmpty() || !desktop().contains(native))
        return Error{text("La zona está fuera de la pantalla.")};
    auto picture = grab(native, {});
    if (!picture)
        return picture.error();
    return std::move(picture).value().image;
}

void X11Grabber::warmUp(const std::vector<ScreenInfo>& screens)
{
    // A grab nobody wants touches every page on both sides, and its memory goes to the store.
    grabScreens(screens, {.dimmedCopy = true}, [](const auto&) {});
}

Result<X11Grabber::Picture> X11Grabber::grab(const QRect& native, GrabOptions options)
{
    if (m_format.format == QImage::Format_Invalid)
        return Error{text("La pantalla usa un formato de color desconocido.")};
    auto picture = grabShared(native, options);
    if (!picture) {
        auto image = grabThroughConnection(native);
        if (!image)
            return image.error();
        picture = Picture{converted(std::move(image).value()), {}};
        if (options.dimmedCopy)
            picture->dimmed = dimmedCopy(picture->image);
    }
    if (picture->image.isNull() || (options.dimmedCopy && picture->dimmed.isNull()))
        return Error{text("No hay memoria suficiente para la captura.")};
    return *std::move(picture);
}

std::optional<X11Grabber::Picture> X11Grabber::grabShared(const QRect& native, GrabOptions options)
{
    if (!m_hasSharedMemory)
        return {};
    const qsizetype bytesPerLine = m_format.bytesPerLine(native.width());
    auto buffer = m_store.take(PixelBuffer::Kind::shared,
                               static_cast<std::size_t>(bytesPerLine * native.height()));
    if (!buffer)
        return {};
    BandedGrab bands(*buffer, native, bytesPerLine);
    Picture picture{m_store.wrap(std::move(buffer), native.size(), bytesPerLine, m_format.format),
                    {}};

    // Dimming on the way needs the final layout and memory of its own.
    std::unique_ptr<PixelBuffer> dimmed;
    if (options.dimmedCopy && m_format.isDirect())
        dimmed = m_store.take(PixelBuffer::Kind::plain,
                              static_cast<std::size_t>(picture.image.sizeInBytes()));
    while (const auto band = bands.next()) {
        if (dimmed)
            Dimming::dimRows(picture.image, dimmed->data(), bytesPerLine, band->firstRow,
                             band->rows);
    }
    if (bands.failed())
        return {};

    picture.image = converted(std::move(picture.image));
    if (dimmed)
        picture.dimmed =
            m_store.wrap(std::move(dimmed), native.size(), bytesPerLine, QImage::Format_RGB32);
    else if (options.dimmedCopy)
        picture.dimmed = dimmedCopy(picture.image);
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
    const qsizetype bytesPerLine = m_format.bytesPerLine(native.width());
    if (!reply || xcb_get_image_data_length(reply.get()) < bytesPerLine * native.height()) {
        return Error{text("El servidor X no entregó la imagen (error %1).")
                         .arg(error ? error->error_code : 0)};
    }
    // The picture keeps the reply itself.
    uchar* const data = xcb_get_image_data(reply.get());
    return QImage(data, native.width(), native.height(), bytesPerLine, m_format.format, std::free,
                  reply.release());
}

QImage X11Grabber::converted(QImage image) const
{
    return m_format.isDirect() ? image : std::move(image).convertToFormat(QImage::Format_RGB32);
}

QImage X11Grabber::dimmedCopy(const QImage& image)
{
    auto buffer =
        m_store.take(PixelBuffer::Kind::plain, static_cast<std::size_t>(image.sizeInBytes()));
    if (!buffer)
        return {};
    Dimming::dimRows(image, buffer->data(), image.bytesPerLine(), 0, image.height());
    return m_store.wrap(std::move(buffer), image.size(), image.bytesPerLine(),
                        QImage::Format_RGB32);
}

} // namespace brindlecam
