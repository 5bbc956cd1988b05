#include "platform/x11/grab/RootBands.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/DrawingPause.h"
#include "platform/x11/grab/PixelBuffer.h"

namespace brindlecam {

RootBands::RootBands(const x11::RootAccess& access, DrawingPause& pause, const PixelBuffer& ring,
                     xcb_drawable_t source, const QRect& rect)
    : m_access(access)
    , m_pause(pause)
    , m_ring(ring)
    , m_source(source)
    , m_rect(rect)
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
        m_access.connection, m_source, static_cast<std::int16_t>(m_rect.x()),
        static_cast<std::int16_t>(m_rect.y() + band.firstRow),
        static_cast<std::uint16_t>(m_rect.width()), static_cast<std::uint16_t>(band.rows),
        x11::kAllPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP, m_ring.segment(),
        static_cast<std::uint32_t>(band.slot)));
    if (band.firstRow + band.rows == m_rect.height())
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
