#pragma once

#include "platform/Panels.h"
#include "platform/x11/connection/ServerClock.h"
#include "platform/x11/windows/ClickSink.h"
#include "platform/x11/windows/PanelWindow.h"

#include <QObject>
#include <QWidget>

#include <chrono>
#include <memory>
#include <unordered_map>
#include <vector>

namespace brindlecam {

/// The windows of the widgets that took a role, each as long as its widget lives, and what has to
/// lie above them and the pins right after a session. Main thread.
class PanelWindows final {
public:
    explicit PanelWindows(std::shared_ptr<X11Events> events);

    [[nodiscard]] const std::shared_ptr<X11Events>& events() const { return m_events; }
    [[nodiscard]] x11::ServerClock& clock() { return m_clock; }

    /// Gives the widget its role, once.
    void add(QWidget& widget, PanelRole role, const QRect& native);
    /// Null for a widget that never took a role.
    [[nodiscard]] PanelWindow* of(const QWidget& widget) const;
    /// Those in this role that are shown now.
    [[nodiscard]] std::vector<PanelWindow*> shown(PanelRole role) const;

    /// More presses in the place of the last one reach nobody, for so long; and after each of them
    /// for another `interval`.
    void swallowPresses(std::chrono::milliseconds left, std::chrono::milliseconds interval);
    void letPressesThrough() { m_clickSink.reset(); }
    /// A window has just been shown, panel or pin: presses that are to reach nobody do not reach it
    /// either. One that a window manager maps later is noticed without this.
    void keepPressesAway();

private:
    struct Entry {
        PanelRole role;
        std::unique_ptr<PanelWindow> window;
    };

    const std::shared_ptr<X11Events> m_events;
    x11::ServerClock m_clock;
    std::unordered_map<const QObject*, Entry> m_entries;
    std::unique_ptr<ClickSink> m_clickSink; ///< right after a session
    QObject m_context;                      ///< ends the connections to widgets that outlive this
};

} // namespace brindlecam
