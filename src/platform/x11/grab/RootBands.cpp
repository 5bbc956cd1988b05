#include "platform/x11/grab/RootBands.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/PixelBuffer.h"

#include <utility>

namespace brindlecam {

RootBands::RootBands(const PixelBuffer& ring, const QRect& native)
    : m_ring(ring)
    , m_native(native)
{
    xcb_grab_server(x11::connection());
}

RootBands::~RootBands()
{
    for (const auto& cookie : m_underWay)
        xcb_discard_reply(x11::connection(), cookie.sequence);
    letOthersDraw();
    send();
}

void RootBands::letOthersDraw()
{
    if (std::exchange(m_drawsAlone, false))
        xcb_ungrab_server(x11::connection());
}

void RootBands::ask(const Band& band)
{
    m_underWay.push_back(xcb_shm_get_image(
        x11::connection(), x11::root(), static_cast<std::int16_t>(m_native.x()),
        static_cast<std::int16_t>(m_native.y() + band.firstRow),
        static_cast<std::uint16_t>(m_native.width()), static_cast<std::uint16_t>(band.rows),
        x11::kAllPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP, m_ring.segment(),
        static_cast<std::uint32_t>(band.slot)));
    if (band.firstRow + band.rows == m_native.height())
        letOthersDraw();
}

void RootBands::send()
{
    xcb_flush(x11::connection());
}

bool RootBands::await()
{
    const auto cookie = m_underWay.front();
    m_underWay.pop_front();
    const x11::Owned<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(x11::connection(), cookie, nullptr));
    return reply != nullptr;
}

} // namespace brindlecam
