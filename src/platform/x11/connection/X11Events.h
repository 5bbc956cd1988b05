#pragma once

#include "platform/x11/connection/KeyRepeats.h"
#include "platform/x11/connection/PressFilter.h"
#include "platform/x11/connection/X11Keyboard.h"

#include <QAbstractNativeEventFilter>
#include <QElapsedTimer>

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace brindlecam {

/// Raw events of Qt's connection for the ports that need them, before Qt sees them. Main thread;
/// there is one of these, installed as long as it lives, and the application object outlives it.
///
/// It also keeps from Qt the focus changes that a key grab makes (modes Grab and Ungrab): nothing
/// really loses the focus then, but QXcbWindow::handleFocusOutEvent (Qt 6.4, and still 6.11) does
/// not look at the mode, and text editing would end after a tenth of a second. Drop it when Qt
/// looks.
class X11Events final : public QAbstractNativeEventFilter {
public:
    enum class Verdict { pass, swallow };
    using Listener = std::function<Verdict(const xcb_generic_event_t&)>;
    /// Keeps a listener subscribed; dropping it ends that, also from within the listener.
    using Subscription = std::shared_ptr<const Listener>;

    X11Events();
    ~X11Events() override;
    X11Events(const X11Events&) = delete;
    X11Events& operator=(const X11Events&) = delete;

    /// Calls `listener` for every event until the subscription is dropped. A swallowed event
    /// reaches neither later listeners nor Qt.
    [[nodiscard]] Subscription listen(Listener listener);

    /// The server's time of the latest key, button, pointer or property event; XCB_CURRENT_TIME
    /// when there was none yet.
    [[nodiscard]] xcb_timestamp_t lastTime() const { return m_lastTime; }

    /// Keys that a finger has pressed since forgetPresses(), whichever window of ours they came to
    /// and whoever swallowed them. A key that was down already and repeats is none of them.
    [[nodiscard]] const x11::KeySet& presses() const { return m_presses; }
    void forgetPresses() { m_presses.reset(); }
    /// How long ago a button other than the wheel's was pressed on one of our windows; none: never.
    [[nodiscard]] std::optional<std::chrono::milliseconds> sinceClick() const;

    /// For Qt.
    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

private:
    void noteTime(const xcb_generic_event_t& event);
    void notePress(const xcb_generic_event_t& event);
    void noteClick(const xcb_generic_event_t& event);
    [[nodiscard]] bool isOfInputExtension(const xcb_generic_event_t& event) const;

    std::vector<std::weak_ptr<const Listener>> m_listeners;
    xcb_timestamp_t m_lastTime = XCB_CURRENT_TIME;
    x11::KeySet m_presses;
    x11::PressFilter m_pressFilter;
    KeyRepeats m_keyRepeats;
    QElapsedTimer m_lastClick;
    std::uint8_t m_inputExtension = 0;
};

/// The kind of an event without the bit that says a client sent it.
[[nodiscard]] inline int kindOf(const xcb_generic_event_t& event)
{
    return event.response_type & 0x7f;
}

} // namespace brindlecam
