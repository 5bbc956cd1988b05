#pragma once

#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Keyboard.h"

#include <QTimer>

#include <functional>
#include <memory>

namespace brindlecam {

/// An invisible window that takes the focus and the keyboard until some keys are up, so that their
/// repeats and releases reach nobody. Main thread.
///
/// While it has the keyboard our own hot keys are dead too; it looks by itself once a second
/// whether a release was lost, and gives up after three.
class KeySink final {
public:
    /// `keysUp` is called once, when the keys are up or have been down for too long. It may destroy
    /// the sink.
    KeySink(std::shared_ptr<X11Events> events, const x11::KeySet& keys,
            std::function<void()> keysUp);
    ~KeySink();
    KeySink(const KeySink&) = delete;
    KeySink& operator=(const KeySink&) = delete;

    /// Takes focus and keyboard again, after another of our windows had the focus.
    void take();

private:
    X11Events::Verdict handle(const xcb_generic_event_t& event);
    void look();
    void lookAfterALongTime();
    void finish();

    std::shared_ptr<X11Events> m_events;
    x11::KeySet m_keys;
    std::function<void()> m_keysUp;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    QTimer m_safety;
    int m_secondsLeft;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
