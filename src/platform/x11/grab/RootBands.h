#pragma once

#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/grab/BandRing.h"

#include <QRect>

#include <xcb/shm.h>

#include <deque>

namespace brindlecam {

class DrawingPause;
class PixelBuffer;

/// Bands of one rectangle of the root window, which the server writes into shared memory. The pause
/// ends with the last one that is asked for. On its connection's thread; native pixels.
class RootBands final : public BandPeer {
public:
    /// The rectangle must lie on the desktop, the ring hold the bands.
    RootBands(const x11::RootAccess& access, DrawingPause& pause, const PixelBuffer& ring,
              const QRect& native);
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
    const QRect m_native;
    std::deque<xcb_shm_get_image_cookie_t> m_underWay;
};

} // namespace brindlecam
