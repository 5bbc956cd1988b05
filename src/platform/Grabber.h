#pragma once

#include "base/Result.h"
#include "base/ScreenInfo.h"
#include "platform/RegionFrames.h"

#include <QImage>

#include <functional>
#include <memory>
#include <vector>

class QObject;

namespace brindlecam {

/// The frozen picture of one display in its own pixels (32 bits, opaque, never with the pointer).
struct GrabbedScreen {
    ScreenInfo screen;
    QImage image;
};

/// Reads what the displays show. Images may live in memory of the port's, which they give back when
/// the last copy of the QImage goes. Main thread.
class Grabber {
public:
    virtual ~Grabber() = default;

    using Done = std::function<void(Result<std::vector<GrabbedScreen>>)>;

    /// Grabs whole displays in the caller's order. Displays that are gone by now are left out; the
    /// first that fails fails the call. `done` is called once on the main thread: before this
    /// returns where nobody has to be asked, perhaps much later where the user is. It is not called
    /// once `context` is gone: then the grab is called off, and so is any question to the user.
    virtual void grabScreens(const std::vector<ScreenInfo>& screens, QObject* context,
                             Done done) = 0;

    using Opened = std::function<void(Result<std::unique_ptr<RegionFrames>>)>;

    /// One rectangle of the global desktop (native pixels) for many looks in a row, perhaps across
    /// screens; an error when it is not wholly on the desktop. `opened` is called as `done` is.
    virtual void openRegion(const QRect& native, const RegionOptions& options, QObject* context,
                            Opened opened) = 0;
};

} // namespace brindlecam
