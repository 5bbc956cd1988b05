#include "platform/x11/grab/RootReader.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/ConnectionPixels.h"
#include "platform/x11/grab/GrabErrors.h"
#include "platform/x11/grab/ServerPixels.h"

#include <utility>

namespace brindlecam {

RootReader::RootReader(std::shared_ptr<ServerPixels> pixels)
    : m_pixels(std::move(pixels))
{
}

QRect RootReader::desktop()
{
    const x11::Owned<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
        x11::connection(), xcb_get_geometry(x11::connection(), x11::root()), nullptr));
    return reply ? QRect(0, 0, reply->width, reply->height) : QRect();
}

Result<QImage> RootReader::read(const QRect& native) const
{
    if (native.isEmpty() || !desktop().contains(native))
        return GrabErrors::outside();
    return readOnDesktop(native);
}

Result<QImage> RootReader::readOnDesktop(const QRect& native) const
{
    const RootFormat& format = m_pixels->format();
    if (format.format == QImage::Format_Invalid)
        return GrabErrors::unknownFormat();
    auto raw = readRaw(native);
    if (!raw)
        return raw;
    QImage picture = format.converted(std::move(raw).value());
    if (picture.isNull())
        return GrabErrors::noMemory();
    return picture;
}

Result<QImage> RootReader::readRaw(const QRect& native) const
{
    if (auto shared = m_pixels->read(native))
        return *std::move(shared);
    const auto access = x11::RootAccess::onQtsConnection();
    return ConnectionPixels::receive(access, m_pixels->format(), native.size(),
                                     ConnectionPixels::request(access, access.root, native));
}

} // namespace brindlecam
