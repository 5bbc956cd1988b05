#include "platform/x11/grab/ServerPixels.h"

#include "platform/FirstFrame.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/BandRing.h"
#include "platform/x11/grab/DrawingPause.h"
#include "platform/x11/grab/RootBands.h"
#include "platform/x11/grab/WindowBands.h"

#include <utility>

namespace brindlecam {

ServerPixels::ServerPixels()
    : m_store(x11::connection())
    , m_format(RootFormat::of(*xcb_get_setup(x11::connection()), x11::screen()))
    , m_canShare(PixelBuffer::canShare(x11::connection()))
{
}

std::unique_ptr<PixelBuffer> ServerPixels::takeRing()
{
    return m_canShare ? m_store.take(PixelBuffer::Kind::shared, BandRing::kBytes) : nullptr;
}

// After a failure the server may not be through with it.
void ServerPixels::keep(std::unique_ptr<PixelBuffer> ring, bool isFree)
{
    if (isFree)
        m_store.giveBack(std::move(ring));
}

std::optional<QImage> ServerPixels::read(const QRect& native)
{
    auto ring = takeRing();
    if (!ring)
        return {};
    const qsizetype bytesPerLine = m_format.bytesPerLine(native.width());
    auto pixels = m_store.take(PixelBuffer::Kind::plain,
                               static_cast<std::size_t>(bytesPerLine * native.height()));
    const bool whole = pixels && [&] {
        const auto access = x11::RootAccess::onQtsConnection();
        DrawingPause pause(access.connection);
        RootBands bands(access, pause, *ring, access.root, native);
        return BandRing::read(bands, ring->data(), native.height(), bytesPerLine, pixels->data());
    }();
    keep(std::move(ring), whole);
    if (!whole)
        return {};
    return m_store.wrap(std::move(pixels), native.size(), bytesPerLine, m_format.format);
}

bool ServerPixels::write(xcb_window_t window, const FirstFrame& frame)
{
    if (!m_format.isDirect())
        return false;
    auto ring = takeRing();
    if (!ring)
        return false;
    const qsizetype bytesPerLine = m_format.bytesPerLine(frame.size().width());
    const bool whole = [&] {
        WindowBands bands(*ring, window, frame.size().width());
        return BandRing::write(bands, ring->data(), frame.size().height(), bytesPerLine,
                               [&](const Band& band, uchar* target) {
                                   frame.write(band.firstRow, band.rows, target, bytesPerLine);
                               });
    }();
    keep(std::move(ring), whole);
    return whole;
}

} // namespace brindlecam
