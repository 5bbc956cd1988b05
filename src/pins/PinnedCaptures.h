#pragma once

#include "notices/WindowTip.h"
#include "pictures/Rendered.h"
#include "pins/PinPorts.h"

#include <QObject>
#include <QRect>

#include <memory>
#include <vector>

namespace brindlecam {

class Activity;
class PinDelivery;
class PinnedCapture;
class Toast;

/// Every pin on the screen. Nothing but the user closes one, and there may be any number. Main
/// thread; borrows all it works with.
class PinnedCaptures final {
public:
    PinnedCaptures(const PinPorts& ports, Toast& toast, const Activity& activity,
                   PinDelivery& delivery);
    ~PinnedCaptures();

    /// Opens a pin that covers exactly this rectangle (native pixels of the global desktop). A
    /// picture that could not be made opens none.
    void pin(const Rendered& picture, const QRect& native);

    /// Takes a pin's tool tip off the screen; false when there is none.
    bool hideTip() { return m_tip.dismiss(); }

    /// The open pins in the order of their creation.
    [[nodiscard]] const std::vector<std::unique_ptr<PinnedCapture>>& open() const { return m_open; }

private:
    /// Brings back pins that a change of the displays has left out of reach.
    void stayReachable();
    // Neither is begun any more while the program ends.
    void copy(PinnedCapture& pin);
    void save(const PinnedCapture& pin);
    void dismiss(const PinnedCapture& pin);

    const PinPorts m_ports;
    Toast& m_toast;
    const Activity& m_activity;
    PinDelivery& m_delivery;
    std::vector<std::unique_ptr<PinnedCapture>> m_open;
    WindowTip m_tip;
    QObject m_context; ///< ends our listening
};

} // namespace brindlecam
