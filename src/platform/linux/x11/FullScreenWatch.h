#pragma once

#include "platform/linux/x11/X11Events.h"

#include <QTimer>

#include <functional>
#include <memory>

namespace brindlecam {

/// Watches whether a full-screen window lies above all managed windows, those that stay on top
/// included: that is so while it has the focus, and while the focus is on another screen. Main
/// thread; listens only, nothing is asked while the windows stay as they are.
class FullScreenWatch final {
public:
    /// `changed` runs later, when the answer has changed.
    FullScreenWatch(std::shared_ptr<X11Events> events, std::function<void()> changed);

    [[nodiscard]] bool covers() const { return m_covers; }

private:
    X11Events::Verdict handle(const xcb_generic_event_t& event);
    void look();

    std::shared_ptr<X11Events> m_events;
    std::function<void()> m_changed;
    bool m_covers = false;
    QTimer m_soon;
    QTimer m_later;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
