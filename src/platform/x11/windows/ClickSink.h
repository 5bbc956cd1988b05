#pragma once

#include "platform/x11/connection/X11Events.h"

#include <QRect>
#include <QTimer>

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <memory>

namespace brindlecam {

/// An invisible window right under the pointer, no larger than the hand may stray between the two
/// presses of a double click. It takes the second one, when the window that got the first has gone
/// in between, and one more of a triple click, and leaves the focus alone. Presses elsewhere go
/// where they belong, and so do those after the pointer has left, or that come too late for a
/// double click. Main thread.
class ClickSink final {
public:
    /// `left` is the time in which a second press may come; after that there is a whole `interval`
    /// for the next. `ended` is called once, when the sink is of no more use; it may destroy
    /// it.
    ClickSink(std::shared_ptr<X11Events> events, std::chrono::milliseconds left,
              std::chrono::milliseconds interval, std::function<void()> ended);
    ~ClickSink();
    ClickSink(const ClickSink&) = delete;
    ClickSink& operator=(const ClickSink&) = delete;

    /// Brings it above a window that has just been shown.
    void raise();

private:
    X11Events::Verdict handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool isCovered(const xcb_generic_event_t& event) const;
    void finish();

    std::shared_ptr<X11Events> m_events;
    std::chrono::milliseconds m_interval;
    std::function<void()> m_ended;
    QRect m_place; ///< native pixels; empty: there is no window
    xcb_window_t m_window = XCB_WINDOW_NONE;
    bool m_held = false;
    int m_taken = 0;
    QTimer m_timer;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
