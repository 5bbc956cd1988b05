#include "desktop/support/x11/X11Screen.h"

#include <xcb/randr.h>

#include <algorithm>
#include <cstring>

namespace brindlecam::desktop {

X11Screen::X11Screen(const QString& display)
    : m_connection(display)
{
}

QRect X11Screen::pixels() const
{
    // Asked anew each time: the setup data keeps the size of the first moment.
    const auto cookie = xcb_get_geometry(m_connection.raw(), m_connection.root());
    const Owned<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(m_connection.raw(), cookie, nullptr));
    return reply ? QRect(0, 0, reply->width, reply->height) : QRect();
}

std::vector<QRect> X11Screen::monitors() const
{
    constexpr std::uint8_t kActiveOnly = 1;
    const Owned<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        m_connection.raw(),
        xcb_randr_get_monitors(m_connection.raw(), m_connection.root(), kActiveOnly), nullptr));
    std::vector<QRect> all;
    if (!reply)
        return all;
    for (auto monitor = xcb_randr_get_monitors_monitors_iterator(reply.get()); monitor.rem > 0;
         xcb_randr_monitor_info_next(&monitor))
        all.emplace_back(monitor.data->x, monitor.data->y, monitor.data->width,
                         monitor.data->height);
    return all;
}

QImage X11Screen::grab(const QRect& pixels) const
{
    const auto cookie =
        xcb_get_image(m_connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_connection.root(),
                      static_cast<std::int16_t>(pixels.x()), static_cast<std::int16_t>(pixels.y()),
                      static_cast<std::uint16_t>(pixels.width()),
                      static_cast<std::uint16_t>(pixels.height()), ~0U);
    const Owned<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(m_connection.raw(), cookie, nullptr));
    if (!reply)
        return {};
    QImage image(pixels.size(), reply->depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32);
    const std::uint8_t* bytes = xcb_get_image_data(reply.get());
    const int stride = xcb_get_image_data_length(reply.get()) / pixels.height();
    for (int y = 0; y < pixels.height(); ++y) {
        const auto length = std::min<qsizetype>(stride, image.bytesPerLine());
        std::memcpy(image.scanLine(y), bytes + static_cast<std::ptrdiff_t>(y) * stride,
                    static_cast<std::size_t>(length));
    }
    return image;
}

} // namespace brindlecam::desktop
