#pragma once

#include "desktop/support/ClientWindow.h"
#include "desktop/support/x11/Connection.h"

#include <QSize>

#include <xcb/shm.h>

#include <vector>

namespace brindlecam::bench {

/// The yardstick of everything that shows a frozen screen: what the server alone needs to copy the
/// whole screen into shared memory and from there into a window, without anybody looking at it.
class FrameCopy final {
public:
    /// `window` covers the screen and shows what it showed before.
    FrameCopy(const QString& display, QSize pixels, desktop::WindowId window);
    ~FrameCopy();

    /// Milliseconds of grab and put, each round with warm memory.
    [[nodiscard]] std::vector<double> grabAndPut(int rounds) const;
    /// Milliseconds of copying the frame in our own memory.
    [[nodiscard]] std::vector<double> memoryCopy(int rounds) const;

private:
    desktop::Connection m_connection;
    const QSize m_pixels;
    const xcb_window_t m_window;
    xcb_gcontext_t m_context = 0;
    xcb_shm_seg_t m_segment = 0;
    std::size_t m_bytes = 0;
    std::uint8_t* m_memory = nullptr;
};

} // namespace brindlecam::bench
