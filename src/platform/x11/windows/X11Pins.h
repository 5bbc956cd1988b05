#pragma once

#include "platform/Pins.h"
#include "platform/x11/windows/FullScreenWatch.h"

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

class CompositorWatch;
class PanelWindow;
class PanelWindows;
class X11Pin;

/// Pins on X11, over full-screen windows, too. Main thread.
class X11Pins final : public Pins {
public:
    X11Pins(std::shared_ptr<PanelWindows> panels, std::shared_ptr<CompositorWatch> compositor);
    ~X11Pins() override;

    [[nodiscard]] std::unique_ptr<PinSurface> make(QWidget& widget, qreal radius,
                                                   std::function<void()> changed) override;

private:
    void forget(const X11Pin& gone);
    /// Keeps the pins over full-screen windows as those come and go.
    void watchFullScreen();
    [[nodiscard]] bool isInUse() const;
    void keepAbovePins(PanelWindow& dialog, bool pinsWereRaised);

    const std::shared_ptr<PanelWindows> m_panels;
    const std::shared_ptr<CompositorWatch> m_compositor;
    std::vector<X11Pin*> m_pins;
    std::unique_ptr<FullScreenWatch> m_fullScreen; ///< while there are pins
};

} // namespace brindlecam
