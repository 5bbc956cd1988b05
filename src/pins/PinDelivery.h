#pragma once

#include "platform/Pasteboard.h"

#include <functional>

namespace brindlecam {

class Rendered;

/// Where a pin's picture goes when its menu is asked to: a room above sees to it. Main thread.
class PinDelivery {
public:
    virtual ~PinDelivery() = default;

    /// Puts the picture on the clipboard; `done` receives what became of it.
    virtual void copyPinned(const Rendered& picture, std::function<void(ClipboardFate)> done) = 0;
    /// Asks the user where the picture is to be saved, and writes it there.
    virtual void savePinned(const Rendered& picture) = 0;
};

} // namespace brindlecam
