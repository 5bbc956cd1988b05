#include "platform/linux/x11/BandedGrab.h"

#include "platform/linux/x11/PixelBuffer.h"
#include "platform/linux/x11/X11.h"

#include <algorithm>

namespace brindlecam {

namespace {

// Small enough to be read again from the cache, large enough for the replies not to count.
constexpr qsizetype kBandBytes = 512 * 1024;
} // namespace

BandedGrab::BandedGrab(const PixelBuffer& buffer, const QRect& native, qsizetype bytesPerLine)
{
    // Nobody else may draw between two bands: the picture is of one moment.
    xcb_grab_server(x11::connection());
    const int bandRows = static_cast<int>(std::max<qsizetype>(1, kBandBytes / bytesPerLine));
    for (int row = 0; row < native.height(); row += bandRows) {
        const int rows = std::min(bandRows, native.height() - row);
        const auto cookie = xcb_shm_get_image(
            x11::connection(), x11::root(), static_cast<std::int16_t>(native.x()),
            static_cast<std::int16_t>(native.y() + row), static_cast<std::uint16_t>(native.width()),
            static_cast<std::uint16_t>(rows), x11::kAllPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP,
            buffer.segment(), static_cast<std::uint32_t>(row * bytesPerLine));
        m_requests.push_back({{row, rows}, cookie});
    }
    xcb_ungrab_server(x11::connection());
    xcb_flush(x11::connection());
}

BandedGrab::~BandedGrab()
{
    for (auto i = m_received; i < m_requests.size(); ++i)
        xcb_discard_reply(x11::connection(), m_requests[i].cookie.sequence);
}

std::optional<BandedGrab::Band> BandedGrab::next()
{
    if (m_failed || m_received == m_requests.size())
        return {};
    const auto& request = m_requests[m_received++];
    const x11::Owned<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(x11::connection(), request.cookie, nullptr));
    if (!reply) {
        m_failed = true;
        return {};
    }
    return request.band;
}

} // namespace brindlecam
