#pragma once

#include "platform/x11/grab/PixelStore.h"
#include "platform/x11/grab/RootFormat.h"

#include <QRect>

#include <xcb/xcb.h>

#include <memory>
#include <optional>

namespace brindlecam {

class FirstFrame;

/// Pixels on their way between the X server and us, through memory that both share (MIT-SHM). Main
/// thread; native pixels.
class ServerPixels final {
public:
    ServerPixels();

    /// How the root window lays out its pixels.
    [[nodiscard]] const RootFormat& format() const { return m_format; }
    /// Memory that waits for the next picture.
    [[nodiscard]] std::size_t keptBytes() const { return m_store.keptBytes(); }

    /// What a rectangle of the root window shows, in that layout. Nothing when the server can't
    /// share memory with us, or refuses a band.
    [[nodiscard]] std::optional<QImage> read(const QRect& native);

    /// Puts the frame into a window of its size and of the root window's depth; on return it is
    /// there. False when that can't be done; then nothing or a part of it is.
    [[nodiscard]] bool write(xcb_window_t window, const FirstFrame& frame);

private:
    /// Null when the server can't share memory with us.
    [[nodiscard]] std::unique_ptr<PixelBuffer> takeRing();
    void keep(std::unique_ptr<PixelBuffer> ring, bool isFree);

    PixelStore m_store;
    RootFormat m_format;
    bool m_canShare = false;
};

} // namespace brindlecam
