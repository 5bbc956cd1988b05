#pragma once

#include "base/Listeners.h"
#include "platform/Panels.h"
#include "platform/x11/connection/OwnerWatch.h"
#include "platform/x11/connection/ServerClock.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/grab/RootReader.h"
#include "platform/x11/windows/ClickSink.h"
#include "platform/x11/windows/FullScreenWatch.h"
#include "platform/x11/windows/PanelWindow.h"

#include <functional>
#include <memory>
#include <unordered_map>

namespace brindlecam {

class ServerPixels;

/// Panels as windows of X11, with or without a window manager and a compositor. Main thread. A
/// widget that never took a role is shown as it is. Panels that blend get an alpha channel whether
/// or not a compositor runs now, so that one which starts later finds it; pins only if one does.
class X11Panels final : public Panels {
public:
    X11Panels(std::shared_ptr<X11Events> events, std::shared_ptr<ServerPixels> pixels);
    ~X11Panels() override;

    void assume(QWidget& widget, PanelRole role) override;
    void show(QWidget& widget, const QRect& native) override;
    void showAtOnce(QWidget& widget, const QRect& native, const FirstFrame& frame,
                    std::function<void()> mayPaint) override;
    void place(QWidget& widget, const QRect& native) override;
    [[nodiscard]] QRect nativeRect(const QWidget& widget) const override;
    void setShape(QWidget& widget, const QRegion& pixels) override;
    void focus(QWidget& widget) override;
    void swallowDoubleClick() override;
    [[nodiscard]] bool translucent() const override;
    [[nodiscard]] bool translucent(const QWidget& widget) const override;
    void whenBlendingChanges(QObject* context, std::function<void()> changed) override;
    [[nodiscard]] QImage backdrop(const QRect& native) override;
    void setOpacity(QWidget& widget, double opacity) override;

private:
    [[nodiscard]] PanelWindow* windowOf(const QWidget& widget) const;
    void forget(const QObject* gone);
    /// Keeps the pins over full-screen windows as those come and go.
    void watchFullScreen();
    [[nodiscard]] bool isInUse() const;
    void keepAbovePins(PanelWindow& dialog, bool pinsWereRaised);

    std::shared_ptr<X11Events> m_events;
    const std::shared_ptr<ServerPixels> m_pixels;
    RootReader m_backdrops;
    x11::ServerClock m_clock;
    std::unordered_map<const QObject*, std::unique_ptr<PanelWindow>> m_windows;
    std::unique_ptr<ClickSink> m_clickSink;        ///< right after a session
    std::unique_ptr<FullScreenWatch> m_fullScreen; ///< while there are pins
    Listeners m_listeners;
    OwnerWatch m_compositor;
    QObject m_context; ///< ends the connections to widgets that outlive this
};

} // namespace brindlecam
