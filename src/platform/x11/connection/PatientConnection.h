#pragma once

#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/connection/X11.h"

#include <QDeadlineTimer>

#include <atomic>
#include <chrono>
#include <functional>
#include <utility>

namespace brindlecam::x11 {

/// A connection of its own whose answers are awaited for so long and no longer, and not at all once
/// it was cut. One thread at a time, but any may cut it.
class PatientConnection final {
public:
    /// Connects to the server that DISPLAY names.
    explicit PatientConnection(std::chrono::milliseconds patience);
    PatientConnection(const PatientConnection&) = delete;
    PatientConnection& operator=(const PatientConnection&) = delete;

    /// False for good once the server is gone or was awaited in vain.
    [[nodiscard]] bool isAlive() const;
    [[nodiscard]] xcb_connection_t* raw() const { return m_connection.get(); }
    [[nodiscard]] const xcb_screen_t& screen() const;
    /// Its answers are awaited by the rules of this class, and as long as this lives.
    [[nodiscard]] RootAccess access();

    /// As xcb_wait_for_reply, but null when the patience is at its end or somebody has cut it.
    [[nodiscard]] void* awaitReply(unsigned int sequence, xcb_generic_error_t** error);

    using Listener = std::function<void(const xcb_generic_event_t&)>;
    /// Who is told of events from now on, while answers are awaited; nobody else ever is.
    void listen(Listener listener) { m_listener = std::move(listener); }
    /// Tells of all that have come before the latest answer.
    void tellEvents();

    /// The patience begins anew.
    void beginWaiting() { m_limit.setRemainingTime(m_patience); }

    /// Ends what is awaited now, and everything after it. Any thread.
    void cut();
    [[nodiscard]] bool wasCut() const { return m_cut; }

private:
    using Poll = xcb_generic_event_t* (*)(xcb_connection_t*);
    void tellEvents(Poll poll);
    /// False when the patience is at its end.
    [[nodiscard]] bool awaitBytes() const;
    /// Both ends see that there is nobody at the other: whoever waits for bytes wakes up.
    void hangUp() const;

    const std::chrono::milliseconds m_patience;
    const OwnConnection m_connection;
    QDeadlineTimer m_limit;
    Listener m_listener;
    std::atomic<bool> m_cut = false;
};

} // namespace brindlecam::x11
