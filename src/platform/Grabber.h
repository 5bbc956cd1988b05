#pragma once

#include "base/Result.h"
#include "base/ScreenInfo.h"

#include <QImage>

#include <functional>
#include <vector>

namespace brindlecam {

/// The frozen picture of one display in its own pixels (32 bits, opaque, never with the pointer),
/// and, where asked for, its dimmed copy of the same size.
struct GrabbedScreen {
    ScreenInfo screen;
    QImage image;
    QImage dimmed; ///< null unless GrabOptions::dimmedCopy
};

struct GrabOptions {
    bool dimmedCopy = false;
};

/// Reads what the displays show. Images may live in memory shared with the system; they are given
/// back when the last copy of the QImage goes. Main thread.
class Grabber {
public:
    virtual ~Grabber() = default;

    using Done = std::function<void(Result<std::vector<GrabbedScreen>>)>;

    /// Grabs whole displays in the caller's order. Displays that are gone by now are left out; the
    /// first that fails fails the call. `done` is called once on the main thread, on some systems
    /// before this returns.
    virtual void grabScreens(const std::vector<ScreenInfo>& screens, GrabOptions options,
                             Done done) = 0;

    /// One rectangle of the global desktop (native pixels) at once, without the pointer.
    [[nodiscard]] virtual Result<QImage> grabRegion(const QRect& native) = 0;

    /// Makes the first grab as fast as the later ones; gives what it holds back by itself within a
    /// few seconds.
    virtual void warmUp(const std::vector<ScreenInfo>& screens) = 0;
};

} // namespace brindlecam
