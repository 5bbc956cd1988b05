#pragma once

#include "base/Result.h"

#include <QImage>
#include <QSize>

#include <chrono>
#include <optional>

namespace brindlecam {

/// How the frames of a region are wanted.
struct RegionOptions {
    enum class Pointer { hidden, shown };
    /// Our own panels of every role but window and dialog, with their menus and tips; never pins.
    enum class Panels {
        shown,
        leftOut, ///< frames show what lies beneath them, as if they were not there
    };

    Pointer pointer = Pointer::hidden;
    Panels panels = Panels::shown;
    QSize size{}; ///< what frames are scaled down to, in pixels; empty: as large as the region

    /// What the frames of a region of that size have; never larger in either direction.
    [[nodiscard]] QSize frameSize(QSize region) const;
};

/// What a region showed at one moment (32 bits, opaque).
struct RegionFrame {
    QImage image;
    std::chrono::steady_clock::time_point taken;
    bool showsPanels = false; ///< they were to be left out, and what lies beneath is not known
};

/// Looks at one rectangle of the desktop again and again. `next()` belongs to one thread, which is
/// not the main one: a frame may take a while. Everything else is the main thread's.
///
/// A system may begin to keep what panels cover only with frames that leave them out, and programs
/// then paint anew what was covered by that time: who opens the frames before showing a panel loses
/// nothing. One that comes, moves or goes later is left out as well.
class RegionFrames {
public:
    /// Stops it, and waits until a `next()` that is under way has returned; none may begin any
    /// more.
    virtual ~RegionFrames() = default;

    /// What the region shows now; nothing once it was stopped. An error while the region is not
    /// wholly on the desktop or no screen shows any of it: it may come back. What fails because the
    /// system does not answer stays so. Frames may go on any thread, also after this has gone.
    [[nodiscard]] virtual Result<std::optional<RegionFrame>> next() = 0;

    /// Whether it leaves panels out, if that was wanted. Where not, they are in the frames, which
    /// say so; whoever shows one had better put it outside of the region.
    [[nodiscard]] virtual bool seesBeneathPanels() const = 0;

    /// Ends a `next()` that is under way, and all after it, without waiting for it.
    virtual void stop() = 0;
};

} // namespace brindlecam
