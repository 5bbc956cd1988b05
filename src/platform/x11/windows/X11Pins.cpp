#include "platform/x11/windows/X11Pins.h"

#include "platform/x11/windows/PanelWindows.h"
#include "platform/x11/windows/X11Pin.h"

#include <QApplication>
#include <QGuiApplication>

#include <utility>

namespace brindlecam {

X11Pins::X11Pins(std::shared_ptr<PanelWindows> panels, std::shared_ptr<CompositorWatch> compositor)
    : m_panels(std::move(panels))
    , m_compositor(std::move(compositor))
{
}

X11Pins::~X11Pins() = default;

std::unique_ptr<PinSurface> X11Pins::make(QWidget& widget, qreal radius,
                                          std::function<void()> changed)
{
    auto pin = std::make_unique<X11Pin>(widget, radius, std::move(changed), m_panels, m_compositor,
                                        [this](const X11Pin& gone) { forget(gone); });
    m_pins.push_back(pin.get());
    watchFullScreen();
    return pin;
}

void X11Pins::forget(const X11Pin& gone)
{
    std::erase(m_pins, &gone);
    if (m_pins.empty())
        m_fullScreen.reset();
}

void X11Pins::watchFullScreen()
{
    if (!m_fullScreen) {
        m_fullScreen = std::make_unique<FullScreenWatch>(
            m_panels->events(),
            FullScreenWatch::Callbacks{.isHeld = [this] { return isInUse(); },
                                       .looked = [this] { watchFullScreen(); }});
    }
    bool shownAgain = false;
    for (X11Pin* pin : m_pins)
        shownAgain = pin->setOverFullScreen(m_fullScreen->covers()) || shownAgain;
    for (PanelWindow* dialog : m_panels->shown(PanelRole::dialog))
        keepAbovePins(*dialog, shownAgain);
}

/// Whether our own windows must stay as they are: one is being dragged, or has a menu open, or lies
/// beneath the overlays of a session.
bool X11Pins::isInUse() const
{
    return QGuiApplication::mouseButtons() != Qt::NoButton || QApplication::activePopupWidget() ||
           !m_panels->shown(PanelRole::overlay).empty();
}

/// A dialog, to save a pin for one, stays above the pins where no full-screen window covers it.
void X11Pins::keepAbovePins(PanelWindow& dialog, bool pinsWereRaised)
{
    if (pinsWereRaised)
        dialog.raise();
    const QRect place = dialog.nativeRect();
    if (!m_fullScreen->covers() || m_fullScreen->coversPartOf(place))
        return;
    for (X11Pin* pin : m_pins) {
        if (pin->window().isShown() && pin->rect().intersects(place))
            pin->window().lowerBelow(dialog);
    }
}

} // namespace brindlecam
