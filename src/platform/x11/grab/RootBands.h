#pragma once

#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/grab/BandRing.h"

#include <QRect>

#include <xcb/shm.h>

#include <deque>

namespace brindlecam {

class DrawingPause;
class PixelBuffer;

/// Bands of one rectangle of the root window, or of a pixmap of its depth, which the server writes
/// into shared memory. The pause ends with the last one that is asked for. On its connection's
/// thread; native pixels.
class RootBands final : public BandPeer {
public:
    /// The rectangle must lie on what is read, the ring hold the bands.
    RootBands(const x11::RootAccess& access, DrawingPause& pause, const PixelBuffer& ring,
              xcb_drawable_t source, const QRect& rect);
    ~RootBands() override;
    RootBands(const RootBands&) = delete;
    RootBands& operator=(const RootBands&) = delete;

    void ask(const Band& band) override;
    void send() override;
    [[nodiscard]] bool await() override;

private:
    const x11::RootAccess& m_access;
    DrawingPause& m_pause;
    const PixelBuffer& m_ring;
    const xcb_drawable_t m_source;
    const QRect m_rect;
    std::deque<xcb_shm_get_image_cookie_t> m_underWay;
};

} // namespace brindlecam
