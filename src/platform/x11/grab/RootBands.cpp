#include "platform/x11/grab/RootBands.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/DrawingPause.h"
#include "platform/x11/grab/PixelBuffer.h"

namespace brindlecam {

RootBands::RootBands(const x11::RootAccess& access, DrawingPause& pause, const PixelBuffer& ring,
                     const QRect& native)
    : m_access(access)
    , m_pause(pause)
    , m_ring(ring)
    , m_native(native)
{
}

RootBands::~RootBands()
{
    for (const auto& cookie : m_underWay)
        xcb_discard_reply(m_access.connection, cookie.sequence);
}

void RootBands::ask(const Band& band)
{
    m_underWay.push_back(xcb_shm_get_image(
        m_access.connection, m_access.root, static_cast<std::int16_t>(m_native.x()),
        static_cast<std::int16_t>(m_native.y() + band.firstRow),
        static_cast<std::uint16_t>(m_native.width()), static_cast<std::uint16_t>(band.rows),
        x11::kAllPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP, m_ring.segment(),
        static_cast<std::uint32_t>(band.slot)));
    if (band.firstRow + band.rows == m_native.height())
        m_pause.end();
}

void RootBands::send()
{
    xcb_flush(m_access.connection);
}

bool RootBands::await()
{
    const auto cookie = m_underWay.front();
    m_underWay.pop_front();
    return m_access.reply<xcb_shm_get_image_reply_t>(cookie.sequence) != nullptr;
}

} // namespace brindlecam
