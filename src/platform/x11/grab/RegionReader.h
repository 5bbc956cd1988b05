#pragma once

#include "base/Result.h"
#include "platform/RegionFrames.h"
#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/grab/PixelBuffer.h"
#include "platform/x11/grab/PointerPicture.h"
#include "platform/x11/grab/RootFormat.h"

#include <QImage>
#include <QRect>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace brindlecam {

class BeneathPanels;
class DrawingPause;
class OutlineQuestion;

/// Reads a rectangle of the root window again and again, with a ring of its own (MIT-SHM) or
/// through the connection, and the pointer's picture of the same moment (XFixes). On its
/// connection's thread, made on the main one; native pixels.
class RegionReader final {
public:
    /// The access must live as long. Round trips.
    RegionReader(const x11::RootAccess& access, const RootFormat& format,
                 const RegionOptions& options);
    ~RegionReader();
    RegionReader(const RegionReader&) = delete;
    RegionReader& operator=(const RegionReader&) = delete;

    struct Look {
        QImage image; ///< without the pointer; 32 bits, their pad byte undefined
        std::optional<PointerPicture> pointer; ///< none, too, where the server can't tell
        std::chrono::steady_clock::time_point taken;
        bool showsPanels = false; ///< they were to be left out, and could not be everywhere
    };

    /// Whether it leaves panels out, if that was wanted.
    [[nodiscard]] bool seesBeneathPanels() const { return m_beneath != nullptr; }

    /// Why the rectangle can't be read now, if so.
    [[nodiscard]] std::optional<Error> refuses(const QRect& native) const;
    /// `used` is an earlier picture, whose memory is taken again where nobody else has it.
    [[nodiscard]] Result<Look> read(const QRect& native, QImage used);

private:
    [[nodiscard]] static std::optional<Error> refusal(const OutlineQuestion& question,
                                                      const QRect& native);
    /// A rectangle of the root window, or of a pixmap of its depth.
    [[nodiscard]] Result<QImage> readPixels(DrawingPause& pause, xcb_drawable_t source,
                                            const QRect& rect, QImage used);
    [[nodiscard]] Result<QImage> readThroughRing(DrawingPause& pause, xcb_drawable_t source,
                                                 const QRect& rect, QImage used);

    const x11::RootAccess& m_access;
    const RootFormat m_format;
    const bool m_knowsMonitors;
    const bool m_seesPointer;
    const bool m_showsPanels;                       ///< as is wanted
    const std::unique_ptr<BeneathPanels> m_beneath; ///< null: they are wanted, or can't be left out
    const std::unique_ptr<PixelBuffer> m_ring;      ///< null: the server can't share memory with us
    std::vector<uchar> m_raw;                       ///< what has yet to be converted
};

} // namespace brindlecam
