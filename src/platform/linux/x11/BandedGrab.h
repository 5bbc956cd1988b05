#pragma once

#include <QRect>

#include <xcb/shm.h>

#include <optional>
#include <vector>

namespace brindlecam {

class PixelBuffer;

/// One rectangle of the root window on its way into shared memory, in horizontal bands: all are
/// asked for at once, and while the server copies the next one, those that arrived can be worked
/// on. Main thread; native pixels.
class BandedGrab final {
public:
    struct Band {
        int firstRow;
        int rows;
    };

    /// Sends the requests. The rectangle must lie on the desktop, the buffer hold it.
    BandedGrab(const PixelBuffer& buffer, const QRect& native, qsizetype bytesPerLine);
    /// Does not wait for bands nobody asked for.
    ~BandedGrab();
    BandedGrab(const BandedGrab&) = delete;
    BandedGrab& operator=(const BandedGrab&) = delete;

    /// Waits for the next band; nothing after the last one or after a failure.
    [[nodiscard]] std::optional<Band> next();
    /// Whether the server refused a band.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    struct Request {
        Band band;
        xcb_shm_get_image_cookie_t cookie;
    };

    std::vector<Request> m_requests;
    std::size_t m_received = 0;
    bool m_failed = false;
};

} // namespace brindlecam
