#pragma once

#include "base/Listeners.h"
#include "platform/Displays.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

#include <cstdint>

class QScreen;

namespace brindlecam {

/// The monitors that RandR reports, with the scale of the QScreen of the same name.
///
/// Listens to RandR itself, too: where a monitor is not just one CRTC (a virtual one, or several
/// that make one), Qt 6.4 takes over its new geometry without emitting QScreen::geometryChanged
/// (QXcbScreen::setMonitor, so still in 6.11). Drop it when Qt emits it for all.
class X11Displays final : public Displays, private QAbstractNativeEventFilter {
public:
    X11Displays();
    ~X11Displays() override;
    X11Displays(const X11Displays&) = delete;
    X11Displays& operator=(const X11Displays&) = delete;

    [[nodiscard]] std::vector<ScreenInfo> screens() const override;
    [[nodiscard]] std::vector<ScreenInfo> layout() const override;
    [[nodiscard]] std::optional<QPoint> pointer() const override;
    void whenChanged(QObject* context, std::function<void()> changed) override;

private:
    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;
    [[nodiscard]] bool mayMeanAChange(const xcb_generic_event_t& event) const;
    void watch(QScreen* screen);
    /// Notes a change; a burst of them is told once.
    void noteChange();
    void tellChange();

    Listeners m_listeners;
    std::vector<ScreenInfo> m_told; ///< what the listeners know
    std::uint8_t m_randrEvent = 0;  ///< number of RandR's first event; 0 without RandR
    bool m_changeNoted = false;
    QObject m_context; ///< ends the connections with us
};

} // namespace brindlecam
