#pragma once

#include "platform/x11/grab/BandRing.h"

#include <QRect>

#include <xcb/shm.h>

#include <deque>

namespace brindlecam {

class PixelBuffer;

/// Bands of one rectangle of the root window, which the server writes into shared memory. From the
/// first band that is asked for to the last one nobody else may draw: the picture is of one moment.
/// Main thread; native pixels.
class RootBands final : public BandPeer {
public:
    /// The rectangle must lie on the desktop, the ring hold the bands.
    RootBands(const PixelBuffer& ring, const QRect& native);
    /// Lets the others draw again, whatever happened, and waits for nothing.
    ~RootBands() override;
    RootBands(const RootBands&) = delete;
    RootBands& operator=(const RootBands&) = delete;

    void ask(const Band& band) override;
    void send() override;
    [[nodiscard]] bool await() override;

private:
    void letOthersDraw();

    const PixelBuffer& m_ring;
    const QRect m_native;
    std::deque<xcb_shm_get_image_cookie_t> m_underWay;
    bool m_drawsAlone = true;
};

} // namespace brindlecam
